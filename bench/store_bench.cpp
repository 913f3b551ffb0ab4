// Cost of the saves file: a "saves.dat" document with a 110-piece puzzle and
// a full history of 200 solves, parsed and written by our JSON code, sealed
// and unsealed, and saved and loaded whole through the store's file path.
// RapidJSON parses and writes the same text in the same run as the baseline.
//
// Usage: store_bench [ROUNDS]   prints medians in microseconds
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>


#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "platform/fs.h"
#include "platform/heap.h"
#include "platform/seal.h"
#include "store/saves_json.h"
#include "store/sealed_file.h"

namespace {

store::SavedPuzzle benchPuzzle() {
  store::SavedPuzzle p;
  p.valid = true;
  p.imageId = "level23";
  p.rows = 10;
  p.cols = 11;
  p.boardW = 1187.5;
  p.boardH = 791.6666666666666;
  p.boardX = 46.25;
  p.boardY = 88;
  p.elapsedMs = 734512;
  p.savedAt = 1763800000000;
  p.rotationMode = store::RotationMode::Rot90;
  for (int i = 0; i < 110; ++i) {
    // Positions as a game leaves them: mostly fractional board units.
    p.pieces.push_back(store::SavedPiece{"r" + std::to_string(i / 11) + "c" + std::to_string(i % 11),
                                         37.5 + i * 10.377, 912.125 - i * 6.61, i % 3 == 0, (i * 90) % 360,
                                         i % 5 == 1});
  }
  return p;
}

std::vector<store::SolveEntry> benchSolves() {
  std::vector<store::SolveEntry> list;
  for (int i = 0; i < 200; ++i) {
    const int64_t at = 1763800000000 - i * 86400000LL;
    list.push_back(store::SolveEntry{std::to_string(at) + "_" + std::to_string(199 - i),
                                     "level" + std::to_string(1 + i % 40), 5 + i % 6, 6 + i % 6,
                                     60000 + i * 1234, at});
  }
  return list;
}

double elapsedMicros(const std::function<void()>& op) {
  const auto start = std::chrono::steady_clock::now();
  op();
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  return times[times.size() / 2];
}

double medianMicros(int rounds, const std::function<void()>& op) {
  std::vector<double> times;
  for (int i = 0; i < rounds; ++i) times.push_back(elapsedMicros(op));
  return median(times);
}

struct Pair {
  double ours, baseline;
};

// The two sides take turns, so a busy moment on a shared machine falls on
// both alike and the ratio stays fair.
Pair medianMicrosInTurn(int rounds, const std::function<void()>& ours, const std::function<void()>& baseline) {
  std::vector<double> a, b;
  for (int i = 0; i < rounds; ++i) {
    a.push_back(elapsedMicros(ours));
    b.push_back(elapsedMicros(baseline));
  }
  return {median(a), median(b)};
}

// Keeps the optimiser from dropping work whose result is not otherwise used.
volatile size_t g_sink = 0;

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1001;
  // The allocator as the game's main sets it, and no other way.
  platform::keepFreedHeap();
  const js::Value doc = store::savesToJson(benchPuzzle(), benchSolves());
  const std::string text = doc.dump();
  const std::string sealed = platform::saveEncrypt(text);

  const Pair parse = medianMicrosInTurn(
      rounds, [&] { g_sink = g_sink + js::parse(text).size(); },
      [&] {
        rapidjson::Document d;
        d.Parse(text.c_str(), text.size());
        g_sink = g_sink + d.MemberCount();
      });
  rapidjson::Document rjDoc;
  rjDoc.Parse(text.c_str(), text.size());
  const Pair dump = medianMicrosInTurn(
      rounds, [&] { g_sink = g_sink + doc.dump().size(); },
      [&] {
        rapidjson::StringBuffer buf;
        rapidjson::Writer<rapidjson::StringBuffer> writer(buf);
        rjDoc.Accept(writer);
        g_sink = g_sink + buf.GetSize();
      });

  const double seal = medianMicros(rounds, [&] { g_sink = g_sink + platform::saveEncrypt(text).size(); });
  const double unseal = medianMicros(rounds, [&] {
    std::string plain;
    g_sink = g_sink + static_cast<size_t>(platform::saveDecrypt(sealed, &plain)) + plain.size();
  });

  char folder[] = "/tmp/store-bench-XXXXXX";
  if (!mkdtemp(folder)) return 1;
  const std::string path = std::string(folder) + "/saves.dat";
  // Disk-bound (two fsyncs each): fewer rounds are enough for a median.
  const int diskRounds = std::max(1, rounds / 5);
  const double save = medianMicros(diskRounds, [&] { store::writeSealed(path, doc); });
  const double load = medianMicros(rounds, [&] {
    store::SavedPuzzle p;
    std::vector<store::SolveEntry> solves;
    store::savesFromJson(js::parse(store::readSealed(path)), &p, &solves);
    g_sink = g_sink + solves.size();
  });
  platform::fs::remove(path);
  platform::fs::remove(folder);

  std::printf("document: %zu bytes of JSON, %zu sealed; medians of %d rounds (%d for the save)\n", text.size(),
              sealed.size(), rounds, diskRounds);
  std::printf("%-38s %10s %10s %8s\n", "operation", "ours us", "rapidjson", "ratio");
  std::printf("%-38s %10.1f %10.1f %8.2f\n", "parse", parse.ours, parse.baseline, parse.ours / parse.baseline);
  std::printf("%-38s %10.1f %10.1f %8.2f\n", "dump", dump.ours, dump.baseline, dump.ours / dump.baseline);
  std::printf("%-38s %10.1f\n", "seal (encrypt)", seal);
  std::printf("%-38s %10.1f\n", "unseal (decrypt)", unseal);
  std::printf("%-38s %10.1f\n", "whole save (dump, seal, 2 fsyncs)", save);
  std::printf("%-38s %10.1f\n", "whole load (read, unseal, parse, map)", load);
  return 0;
}
