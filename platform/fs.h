// File-system helpers that never throw: every failure is a plain false, -1 or
// empty result, so callers fall back instead of catching.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform::fs {

int64_t fileSize(const std::string& path);
// The last modification time in nanoseconds since the epoch; -1 if missing.
int64_t modifiedNs(const std::string& path);
// Sets the modification time to now; false if it cannot.
bool touch(const std::string& path);
bool remove(const std::string& path);
bool isFile(const std::string& path);
bool isDir(const std::string& path);
bool ensureDir(const std::string& path);
std::vector<std::string> listDir(const std::string& path);
bool replaceAtomic(const std::string& from, const std::string& to);
bool syncFile(const std::string& path);
// The whole file in binary; false, with `out` untouched, if it cannot be
// opened or read to the end.
bool readFile(const std::string& path, std::string* out);
// Creates or truncates `path` and writes `data`; false if anything failed,
// closing included (a partly written file may then remain).
bool writeFile(const std::string& path, const std::string& data);
// Writes `data` to `path` + `suffix`, syncs it, renames it over `path` and
// syncs the folder: `path` then holds its old or its new contents whatever
// happens, even a power cut. False, with the temporary file removed, if any
// step failed.
bool writeDurably(const std::string& path, const std::string& data, const std::string& suffix);

enum class Lock { Held, Busy, Unavailable };
// Takes an exclusive lock on `path` (created if missing) and keeps it for the
// rest of the process's life; the system lets go of it when the process
// ends, however it ends. Busy: another process holds it. Unavailable: the
// file cannot be opened or locked at all.
Lock lockForLife(const std::string& path);

}  // namespace platform::fs
