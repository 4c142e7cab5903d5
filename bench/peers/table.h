// What was measured, as Markdown.
#ifndef CONFGROVE_BENCH_PEERS_TABLE_H
#define CONFGROVE_BENCH_PEERS_TABLE_H

#include <string>
#include <vector>

#include "contest.h"

namespace bench {

struct Row {
  const PeerEntry* peer;
  std::vector<Sample> samples;
  double live = 0;    // bytes a section
  int disturbed = 0;  // of the samples
};

// "1,049", or "9.7" where a whole number would say too little.
std::string Figure(double value);

// A line for each row: medians, and how many times the first row's figure each one is.
void PrintTable(const std::vector<Row>& rows);

}  // namespace bench

#endif
