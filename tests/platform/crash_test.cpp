#include "platform/crash.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "platform/paths.h"
#include "tests/support/test_support.h"

namespace {

using testsupport::readFile;
using testsupport::ScopedEnv;
using testsupport::TempDir;

const char kHeader[] =
    "Quillmoss's Puzzle 1.1.0 (Build 1000)\nportiert aus 1.1 Build 1299\n"
    "-----------------------------------------\n";

// Crashes a forked copy of this process with `sig` after installing the
// handler and leaving `note`; the report is left for the parent to read.
void crashChild(int sig, const char* note) {
  platform::installCrashHandler();
  platform::setCrashContext(note);
  std::raise(sig);
}

TEST(CrashReport, SegfaultWritesHeaderSignalAndContext) {
  TempDir dir;
  ScopedEnv runtime("XDG_RUNTIME_DIR", dir.path());
  EXPECT_EXIT(crashChild(SIGSEGV, "Bildschirm 3, Bild level7, Raster 6x7"), ::testing::KilledBySignal(SIGSEGV), "");
  const std::string expected = std::string(kHeader) +
                               "Signal: SIGSEGV (Zugriff auf fremden Speicher)\n"
                               "Zuletzt: Bildschirm 3, Bild level7, Raster 6x7\n"
                               "\nDiese Datei wird NICHT verschickt. Wenn du magst, schick sie an\n"
                               "support@quillmoss.software \xE2\x80\x94 daraus laesst sich der Fehler finden.\n";
  EXPECT_EQ(readFile(dir.file("tessellatrix_crash.txt")), expected);
}

TEST(CrashReport, EmptyNoteWritesNoContextLine) {
  TempDir dir;
  ScopedEnv runtime("XDG_RUNTIME_DIR", dir.path());
  EXPECT_EXIT(crashChild(SIGABRT, nullptr), ::testing::KilledBySignal(SIGABRT), "");
  const std::string report = readFile(dir.file("tessellatrix_crash.txt"));
  EXPECT_EQ(report.rfind(kHeader, 0), 0u);
  EXPECT_NE(report.find("Signal: SIGABRT (abgebrochen)\n\nDiese Datei"), std::string::npos);
  EXPECT_EQ(report.find("Zuletzt"), std::string::npos);
}

TEST(CrashReport, EachFatalSignalNamesItselfAndStillKills) {
  struct Case {
    int sig;
    const char* text;
  };
  const Case cases[] = {
      {SIGILL, "SIGILL (unerlaubter Befehl)\n"},
      {SIGTRAP, "SIGTRAP (fataler GLib-Fehler \xE2\x80\x94 fehlt eine Ressource?)\n"},
      {SIGBUS, "SIGBUS (Busfehler)\n"},
      {SIGFPE, "SIGFPE (Rechenfehler)\n"},
  };
  for (const Case& c : cases) {
    TempDir dir;
    ScopedEnv runtime("XDG_RUNTIME_DIR", dir.path());
    EXPECT_EXIT(crashChild(c.sig, "x"), ::testing::KilledBySignal(c.sig), "") << c.text;
    EXPECT_NE(readFile(dir.file("tessellatrix_crash.txt")).find(std::string("Signal: ") + c.text),
              std::string::npos);
  }
}

TEST(CrashReport, ContextIsCutTo120Bytes) {
  TempDir dir;
  ScopedEnv runtime("XDG_RUNTIME_DIR", dir.path());
  const std::string note = std::string(120, 'a') + std::string(80, 'b');
  EXPECT_EXIT(crashChild(SIGSEGV, note.c_str()), ::testing::KilledBySignal(SIGSEGV), "");
  EXPECT_NE(readFile(dir.file("tessellatrix_crash.txt")).find("Zuletzt: " + std::string(120, 'a') + "\n"),
            std::string::npos);
}

TEST(CrashReport, WithoutRuntimeDirTheReportGoesToTheDataDir) {
  ScopedEnv runtime("XDG_RUNTIME_DIR", std::nullopt);
  platform::installCrashHandler();
  EXPECT_EQ(std::string(platform::crashReportPath()), paths::dataDir() + "/tessellatrix_crash.txt");
  ScopedEnv empty("XDG_RUNTIME_DIR", std::string());
  platform::installCrashHandler();
  EXPECT_EQ(std::string(platform::crashReportPath()), paths::dataDir() + "/tessellatrix_crash.txt");
}

TEST(CrashReport, UnwritableReportStillDiesBySignal) {
  ScopedEnv runtime("XDG_RUNTIME_DIR", "/nonexistent/folder");
  EXPECT_EXIT(crashChild(SIGSEGV, "note"), ::testing::KilledBySignal(SIGSEGV), "");
}

}  // namespace
