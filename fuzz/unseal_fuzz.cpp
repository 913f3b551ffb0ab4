// The road of a file into the game: envelope, JSON, settings and saves.
// Random bytes hardly ever pass authentication, so each input is used twice:
// as an envelope (every rejection path), and as the text inside a genuine
// envelope, which must open to the same bytes and then load through both
// document mappings. A loaded record, written and loaded again, must come
// out the same: otherwise a save would change what the player had.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/seal.h"
#include "store/saves_json.h"
#include "store/settings_json.h"
#include "store/store.h"

namespace {

void require(bool ok) {
  if (!ok) std::abort();
}

void loadDocument(const std::string& text) {
  const js::Value doc = js::parse(text);

  store::Settings settings;
  store::settingsFromJson(doc, &settings);
  const std::string settingsText = store::settingsToJson(settings).dump();
  store::Settings settingsAgain;
  store::settingsFromJson(js::parse(settingsText), &settingsAgain);
  require(store::settingsToJson(settingsAgain).dump() == settingsText);

  store::SavedPuzzle puzzle;
  std::vector<store::SolveEntry> solves;
  store::savesFromJson(doc, &puzzle, &solves);
  require(solves.size() <= store::kMaxSolves);
  const std::string savesText = store::savesToJson(puzzle, solves).dump();
  store::SavedPuzzle puzzleAgain;
  std::vector<store::SolveEntry> solvesAgain;
  store::savesFromJson(js::parse(savesText), &puzzleAgain, &solvesAgain);
  require(store::savesToJson(puzzleAgain, solvesAgain).dump() == savesText);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::string plain;
  const platform::SealResult asEnvelope = platform::saveDecrypt(bytes, &plain);
  if (asEnvelope == platform::SealResult::Ok) {
    loadDocument(plain);
  } else {
    require(plain.empty());
  }

  const std::string sealed = platform::saveEncrypt(bytes);
  require(sealed.size() == platform::kSealHeaderSize + bytes.size());
  require(platform::saveDecrypt(sealed, &plain) == platform::SealResult::Ok && plain == bytes);
  loadDocument(plain);
  return 0;
}
