// One library at work on one tree, from its file to its end.
#ifndef CONFGROVE_BENCH_PEERS_CONTEST_H
#define CONFGROVE_BENCH_PEERS_CONTEST_H

#include <array>
#include <string>

#include "peer.h"

namespace bench {

// What is measured: ns a section, for LookUp and Set ns a call, for List ns a name; bytes a
// section. 0 is not measured.
enum Measure { First, Warm, LookUp, Set, Write, Destroy, Live, Peak, List, MeasureCount };
using Sample = std::array<double, MeasureCount>;

// Where a run finds its work, and where it may write: a directory of its own for each tree.
struct Place {
  std::string input;   // the tree in the library's format
  std::string output;  // beside it
  std::string task;
};

// Checks what the library answers and counts its heap. Throws if an answer is wrong.
Sample CheckedRun(const PeerEntry& entry, const Place& place);

// The times, and the peak. Nothing else may have been done in this process before.
Sample TimedRun(const PeerEntry& entry, const Place& place);

}  // namespace bench

#endif
