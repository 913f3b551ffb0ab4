// The saved puzzle and the solve history as the JSON document of "saves.dat":
// {"current_puzzle": {...}, "solves_list": [...]}, the puzzle member left out
// when no puzzle is saved.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "js/json.h"
#include "store/records.h"

namespace store {

js::Value savesToJson(const SavedPuzzle& current, const std::vector<SolveEntry>& solves);
// Fills both from a document; a document that is not an object, and a
// "current_puzzle" without a string "imageId", leave them as they were.
void savesFromJson(const js::Value& doc, SavedPuzzle* current, std::vector<SolveEntry>* solves);

// The id of a solve about to be put in front of `list`: "<ms>_<entries>".
// That is unique while the list grows; once it is full the count stands
// still, so two solves in one millisecond would clash: the number is then
// raised until it is free.
std::string makeSolveId(int64_t solvedAt, const std::vector<SolveEntry>& list);

}  // namespace store
