#include "table.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace bench {
namespace {

constexpr const char* Titles[MeasureCount] = {"first load",   "warm load", "look-up, 3 names",
                                              "set, 3 names", "write",     "destroy",
                                              "heap bytes",   "peak",      "names by index"};

double Median(const Row& row, Measure measure) {
  if (measure == Live) return row.live;
  std::vector<double> values;
  for (const Sample& sample : row.samples) values.push_back(sample[measure]);
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// The figure, and how many times that of the first row it is.
std::string Cell(double value, double first) {
  if (value == 0) return "| ";
  char ratio[64] = " | ";
  if (first > 0) {
    std::snprintf(ratio, sizeof ratio, " (%.*f) | ", value < 20 * first ? 2 : 0, value / first);
  }
  return Figure(value) + ratio;
}

}  // namespace

std::string Figure(double value) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.*f", value < 20 ? 1 : 0, value);
  std::string text = digits;
  if (value < 20) return text;
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
  return text;
}

void PrintTable(const std::vector<Row>& rows) {
  const int measures = Median(rows[0], List) == 0 ? List : MeasureCount;
  std::cout << "| | ";
  for (int i = 0; i < measures; ++i) std::cout << Titles[i] << " | ";
  std::cout << "runs |\n|---|";
  for (int i = 0; i <= measures; ++i) std::cout << "---:|";
  std::cout << "\n";
  for (const Row& row : rows) {
    std::cout << "| " << row.peer->name << " | ";
    for (int i = 0; i < measures; ++i) {
      const auto measure = static_cast<Measure>(i);
      std::cout << Cell(Median(row, measure), Median(rows[0], measure));
    }
    std::cout << row.samples.size();
    if (row.disturbed > 0) std::cout << ", " << row.disturbed << " disturbed";
    std::cout << " |\n";
  }
  std::cout.flush();
}

}  // namespace bench
