// What was measured, as Markdown.
#ifndef CONFGROVE_BENCH_PEERS_TABLE_H
#define CONFGROVE_BENCH_PEERS_TABLE_H

#include <cstddef>
#include <string>
#include <vector>

#include "contest.h"

namespace bench {

// What a run gave, and how quiet the machine was.
struct Turn {
  Sample sample;
  double loop;  // seconds that the loop took before or after it, whichever took longer
};

struct Row {
  const PeerEntry* peer;
  std::vector<Turn> turns;
  double live = 0;            // bytes a section
  std::size_t disturbed = 0;  // of the turns
};

// "1,049", or "9.7" where a whole number would say too little.
std::string Figure(double value);

// A line for each row: medians, and how many times the first row's figure each one is.
void PrintTable(const std::vector<Row>& rows);

}  // namespace bench

#endif
