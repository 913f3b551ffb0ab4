// Sealed files on disk, for the store's own use.
#pragma once

#include <string>

#include "js/json.h"

namespace store {

// The plaintext, or empty when there is no file or it is empty or unreadable.
// A file that is not a valid envelope (damaged, hand-edited, plain JSON) is
// renamed to "<path>.manipuliert" with a "[storage]" line on standard error.
std::string readSealed(const std::string& path);

// Writes `doc` sealed through "<path>.neu". The target is replaced by one
// rename only after the new bytes are on disk, so a crash at any moment
// leaves either the old file or the new one, never a missing or partial one.
// Failures are silent and leave the old file as it was.
void writeSealed(const std::string& path, const js::Value& doc);

}  // namespace store
