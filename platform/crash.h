// Crash report: a fatal signal leaves a short plain-text file a player can
// send in. Everything the handler writes is prepared before it can run.
#pragma once

namespace platform {

void installCrashHandler();
// Keeps at most the first 120 bytes of `text`; null clears the note.
void setCrashContext(const char* text);
const char* crashContext();
// Where the report goes (valid after installCrashHandler).
const char* crashReportPath();

}  // namespace platform
