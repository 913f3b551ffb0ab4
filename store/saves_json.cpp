#include "store/saves_json.h"

#include <algorithm>
#include <cstdio>

#include "store/json_fields.h"
#include "store/settings_json.h"
#include "store/store.h"

namespace store {

namespace {

js::Value pieceJson(const SavedPiece& p) {
  js::Value v = js::Value::makeObject();
  v.set("id", js::Value(p.id));
  v.set("x", finiteNumber(p.x));
  v.set("y", finiteNumber(p.y));
  v.set("placed", js::Value(p.placed));
  v.set("rotation", js::Value(p.rotation));
  v.set("inTray", js::Value(p.inTray));
  return v;
}

js::Value puzzleJson(const SavedPuzzle& p) {
  js::Value v = js::Value::makeObject();
  v.set("imageId", js::Value(p.imageId));
  v.set("rows", js::Value(p.rows));
  v.set("cols", js::Value(p.cols));
  v.set("boardW", finiteNumber(p.boardW));
  v.set("boardH", finiteNumber(p.boardH));
  v.set("boardX", finiteNumber(p.boardX));
  v.set("boardY", finiteNumber(p.boardY));
  v.set("orientation", js::Value(p.landscape ? "landscape" : "portrait"));
  js::Value& pieces = v.set("pieces", js::Value::makeArray());
  pieces.array.reserve(p.pieces.size());
  for (const SavedPiece& piece : p.pieces) pieces.push(pieceJson(piece));
  v.set("elapsedMs", js::Value(static_cast<long long>(p.elapsedMs)));
  v.set("savedAt", js::Value(static_cast<long long>(p.savedAt)));
  v.set("rotationMode", js::Value(rotationModeName(p.rotationMode)));
  return v;
}

js::Value solveJson(const SolveEntry& e) {
  js::Value v = js::Value::makeObject();
  v.set("id", js::Value(e.id));
  v.set("imageId", js::Value(e.imageId));
  v.set("rows", js::Value(e.rows));
  v.set("cols", js::Value(e.cols));
  v.set("elapsedMs", js::Value(static_cast<long long>(e.elapsedMs)));
  v.set("solvedAt", js::Value(static_cast<long long>(e.solvedAt)));
  return v;
}

// A piece id that is not a string loads as empty, not as kept.
SavedPiece pieceFrom(const js::Value& v) {
  SavedPiece p;
  readString(v["id"], &p.id);
  p.rotation = readInt(v["rotation"], 0, -360, 360);
  readNumber(v["x"], &p.x, -kMaxCoordinate, kMaxCoordinate);
  readNumber(v["y"], &p.y, -kMaxCoordinate, kMaxCoordinate);
  readBool(v["placed"], &p.placed);
  readBool(v["inTray"], &p.inTray);
  return p;
}

void puzzleFrom(const js::Value& v, SavedPuzzle* p) {
  if (!v.isObject() || !v["imageId"].isString()) return;
  p->imageId = v["imageId"].string;
  p->rows = readInt(v["rows"], 0, 0, kMaxGridSide);
  p->cols = readInt(v["cols"], 0, 0, kMaxGridSide);
  for (const auto& [key, field] : {std::pair{"boardW", &p->boardW}, std::pair{"boardH", &p->boardH},
                                   std::pair{"boardX", &p->boardX}, std::pair{"boardY", &p->boardY}}) {
    readNumber(v[key], field, -kMaxCoordinate, kMaxCoordinate);
  }
  // Only the exact word turns the board upright; "Portrait" does not.
  const js::Value& orientation = v["orientation"];
  p->landscape = !(orientation.isString() && orientation.string == "portrait");
  readInt64(v["elapsedMs"], &p->elapsedMs, 0, kMaxPlayMs);
  readInt64(v["savedAt"], &p->savedAt, -kMaxStampMs, kMaxStampMs);
  p->rotationMode = rotationModeFromName(v["rotationMode"]);
  p->pieces.clear();
  const js::Value& pieces = v["pieces"];
  if (pieces.isArray()) {
    for (const js::Value& piece : pieces.array) p->pieces.push_back(pieceFrom(piece));
  }
  p->valid = true;
}

SolveEntry solveFrom(const js::Value& v) {
  SolveEntry e;
  readString(v["id"], &e.id);
  readString(v["imageId"], &e.imageId);
  e.rows = readInt(v["rows"], 0, 0, kMaxGridSide);
  e.cols = readInt(v["cols"], 0, 0, kMaxGridSide);
  readInt64(v["elapsedMs"], &e.elapsedMs, 0, kMaxPlayMs);
  readInt64(v["solvedAt"], &e.solvedAt, -kMaxStampMs, kMaxStampMs);
  return e;
}

}  // namespace

js::Value savesToJson(const SavedPuzzle& current, const std::vector<SolveEntry>& solves) {
  js::Value doc = js::Value::makeObject();
  if (current.valid) doc.set("current_puzzle", puzzleJson(current));
  js::Value& list = doc.set("solves_list", js::Value::makeArray());
  list.array.reserve(solves.size());
  for (const SolveEntry& e : solves) list.push(solveJson(e));
  return doc;
}

void savesFromJson(const js::Value& doc, SavedPuzzle* current, std::vector<SolveEntry>* solves) {
  if (!doc.isObject()) return;
  puzzleFrom(doc["current_puzzle"], current);
  const js::Value& list = doc["solves_list"];
  if (!list.isArray()) return;
  solves->clear();
  // The file is newest first already; anything past the cap is the oldest.
  for (const js::Value& entry : list.array) {
    if (solves->size() == kMaxSolves) break;
    solves->push_back(solveFrom(entry));
  }
}

std::string makeSolveId(int64_t solvedAt, const std::vector<SolveEntry>& list) {
  char buf[48];
  for (int n = static_cast<int>(list.size());; ++n) {
    std::snprintf(buf, sizeof buf, "%lld_%d", static_cast<long long>(solvedAt), n);
    const bool taken = std::any_of(list.begin(), list.end(), [&](const SolveEntry& e) { return e.id == buf; });
    if (!taken) return buf;
  }
}

}  // namespace store
