// One library at work on one tree, from its text to its end.
#ifndef CONFGROVE_BENCH_PEERS_CONTEST_H
#define CONFGROVE_BENCH_PEERS_CONTEST_H

#include <array>
#include <string>
#include <vector>

#include "peer.h"

namespace bench {

// What is measured: ns a section, for LookUp and Set ns a call; bytes a section. 0 is not measured.
enum Measure { Parse, LookUp, Set, Write, Destroy, Live, Peak, List, MeasureCount };
using Sample = std::array<double, MeasureCount>;

struct Tree {
  std::string label;
  Node (*make)(std::size_t);
  std::size_t size;
  bool wide;  // has a block to list
};

// The trees that libraries are compared by, and how many of them a quick comparison takes.
extern const std::vector<Tree> Trees;
constexpr std::size_t QuickTrees = 3;

// Whether a library takes so long to parse a tree, 20 s, that no second run is worth the wait.
bool IsSlow(const Sample& sample, double sections);

// Checks what the library answers and counts its heap; its times are good for slow ones. Throws if
// an answer is wrong.
Sample CheckedRun(const PeerEntry& entry, const Tree& tree);

// The times alone, those of small trees over many rounds.
Sample TimedRun(const PeerEntry& entry, const Tree& tree);

}  // namespace bench

#endif
