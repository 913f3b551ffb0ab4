// The settings and saves store: one record of preferences, the puzzle in
// progress and the solve history, kept in "settings.dat" and "saves.dat" in
// the data folder. Every function loads the files on its first use, so no
// change can ever be written over a file that was not read; every change
// below is written at once. Failures are silent: the game goes on with
// defaults and the files keep their last good contents.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/records.h"
#include "store/settings.h"

namespace store {

// The history keeps the newest solves only.
inline constexpr size_t kMaxSolves = 200;

// Makes this process the only one using the data folder, before anything in
// it is read or written: two games writing the same files can empty them.
// False when another process has it; the caller must then leave the folder
// alone. A folder that cannot be locked at all (read-only) is not refused.
bool claimDataDir();
// The language the settings file names, read without loading the settings
// and without setting a damaged file aside ("" when there is none).
std::string storedLanguage();

// Reads both files, once per process; later calls return at once.
void init();

// The one settings record, edited in place by the screens.
Settings& settings();
// Replaces the fields the settings file holds in the right form.
void loadSettings();
void saveSettings();

// Check `valid`: only a valid puzzle is written.
SavedPuzzle& currentPuzzle();
// Stores a copy, marked valid and stamped with the current time.
void savePuzzle(const SavedPuzzle& puzzle);
void clearPuzzle();

// Newest first.
std::vector<SolveEntry>& solves();
void recordSolve(const std::string& imageId, int rows, int cols, long long elapsedMs);
void clearSolves();

// Wall-clock milliseconds since the Unix epoch.
int64_t nowMs();

}  // namespace store
