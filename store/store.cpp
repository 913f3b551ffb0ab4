#include "store/store.h"

#include <chrono>

#include "platform/fs.h"
#include "platform/paths.h"
#include "platform/seal.h"
#include "store/pictures.h"
#include "store/saves_json.h"
#include "store/sealed_file.h"
#include "store/settings_json.h"

namespace store {

// Everything the store remembers, created on first use, gone at exit.
struct State {
  Settings settings;
  SavedPuzzle current;
  std::vector<SolveEntry> solves;  // newest first
  bool initialised = false;
};

namespace {

State& state() {
  static State s;
  return s;
}

// Any use of the store reads the files first: a save made before the files
// were read would overwrite the player's history with an empty one.
State& loaded() {
  init();
  return state();
}

std::string settingsPath() { return paths::dataDir() + "/settings.dat"; }
std::string savesPath() { return paths::dataDir() + "/saves.dat"; }

void writeSaves() {
  const State& s = state();
  writeSealed(savesPath(), savesToJson(s.current, s.solves));
}

}  // namespace

bool claimDataDir() {
  return platform::fs::lockForLife(paths::dataDir() + "/tessellatrix.lock") != platform::fs::Lock::Busy;
}

std::string storedLanguage() {
  std::string sealed, plain;
  Settings s;
  if (platform::fs::readFile(settingsPath(), &sealed) &&
      platform::saveDecrypt(sealed, &plain) == platform::SealResult::Ok) {
    settingsFromJson(js::parse(plain), &s);
  }
  return s.language;
}

void init() {
  State& s = state();
  if (s.initialised) return;
  s.initialised = true;
  loadSettings();
  savesFromJson(js::parse(readSealed(savesPath())), &s.current, &s.solves);
  // The player's own pictures are levels too: a save or a solve may name one.
  loadPictures();
}

Settings& settings() { return loaded().settings; }

void loadSettings() {
  // An empty text (no file, or one set aside) parses to null: defaults stay.
  settingsFromJson(js::parse(readSealed(settingsPath())), &state().settings);
}

void saveSettings() { writeSealed(settingsPath(), settingsToJson(loaded().settings)); }

SavedPuzzle& currentPuzzle() { return loaded().current; }

void savePuzzle(const SavedPuzzle& puzzle) {
  State& s = loaded();
  s.current = puzzle;
  s.current.valid = true;
  s.current.savedAt = nowMs();
  writeSaves();
}

void clearPuzzle() {
  loaded().current = SavedPuzzle();
  writeSaves();
}

std::vector<SolveEntry>& solves() { return loaded().solves; }

void recordSolve(const std::string& imageId, int rows, int cols, long long elapsedMs) {
  std::vector<SolveEntry>& list = loaded().solves;
  const int64_t now = nowMs();
  list.insert(list.begin(), SolveEntry{makeSolveId(now, list), imageId, rows, cols, elapsedMs, now});
  if (list.size() > kMaxSolves) list.resize(kMaxSolves);
  writeSaves();
}

void clearSolves() {
  loaded().solves.clear();
  writeSaves();
}

int64_t nowMs() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

}  // namespace store
