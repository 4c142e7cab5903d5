// Gives every library the same trees and prints a table for each tree, in Markdown.
//
//   bench_peers [--quick] [PEER...]        PEER is part of a name
//   bench_peers --run KIND TREE PEER FILE  one run, its sample to FILE; the first form calls this
//
// All libraries read from a file and write to one. Each run is a process of its own, so that none
// finds the heap as another left it. The runs go round: the first of each library, then the second
// of each.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "contest.h"
#include "files.h"

namespace bench {
namespace {

constexpr const char* Titles[MeasureCount] = {
    "parse",   "look-up, 3 names", "set, 3 names",       "write",
    "destroy", "heap bytes",       "heap while parsing", "list names"};

struct Row {
  std::size_t peer;  // among Peers()
  std::vector<Sample> samples;
  double live = 0;
  double peak = 0;
  bool slow = false;
};

// "check" or "time".
void RunOnce(const std::string& kind, std::size_t tree, std::size_t peer, const std::string& file) {
  const auto run = kind == "check" ? CheckedRun : TimedRun;
  const Sample sample = run(Peers().at(peer), Trees.at(tree));
  std::ofstream stream(file);
  for (double value : sample) stream << value << "\n";
  if (!stream.flush()) throw std::runtime_error("cannot write " + file);
}

// The same in a process of its own.
Sample RunApart(const std::string& program, const char* kind, std::size_t tree, std::size_t peer) {
  const TemporaryDirectory directory;
  const std::string file = directory.File("sample");
  const std::string command = "\"" + program + "\" --run " + kind + " " + std::to_string(tree) +
                              " " + std::to_string(peer) + " \"" + file + "\"";
  if (std::system(command.c_str()) != 0) {
    throw std::runtime_error(Peers()[peer].name + " has failed");
  }
  Sample sample{};
  std::ifstream stream(file);
  for (double& value : sample) stream >> value;
  if (!stream) throw std::runtime_error("cannot read " + file);
  return sample;
}

double Median(const Row& row, Measure measure) {
  if (measure == Live) return row.live;
  if (measure == Peak) return row.peak;
  std::vector<double> values;
  for (const Sample& sample : row.samples) values.push_back(sample[measure]);
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// "1,049", or "9.7" where a whole number would say too little.
std::string Figure(double value) {
  char digits[64];
  std::snprintf(digits, sizeof digits, "%.*f", value < 20 ? 1 : 0, value);
  std::string text = digits;
  if (value < 20) return text;
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
  return text;
}

// The figure, and how many times that of the first row it is.
std::string Cell(double value, double first) {
  if (value == 0) return "| ";
  char ratio[64];
  std::snprintf(ratio, sizeof ratio, " (%.*f) | ", value < 20 * first ? 2 : 0, value / first);
  return Figure(value) + ratio;
}

// The first `measures` of them.
void PrintTable(int measures, const std::vector<Row>& rows) {
  std::cout << "| | ";
  for (int i = 0; i < measures; ++i) std::cout << Titles[i] << " | ";
  std::cout << "runs |\n|---|";
  for (int i = 0; i <= measures; ++i) std::cout << "---:|";
  std::cout << "\n";
  for (const Row& row : rows) {
    std::cout << "| " << Peers()[row.peer].name << " | ";
    for (int i = 0; i < measures; ++i) {
      const auto measure = static_cast<Measure>(i);
      std::cout << Cell(Median(row, measure), Median(rows[0], measure));
    }
    std::cout << row.samples.size() << " |\n";
  }
  std::cout.flush();
}

void Compare(const std::string& program, std::size_t tree, std::vector<Row> rows,
             std::size_t runs) {
  const Node root = Trees[tree].make(Trees[tree].size);
  const auto sections = static_cast<double>(CountSections(root));
  const auto bytes = static_cast<double>(ConfigurationText(root).size());
  for (Row& row : rows) {
    const Sample sample = RunApart(program, "check", tree, row.peer);
    row.live = sample[Live];
    row.peak = sample[Peak];
    row.slow = IsSlow(sample, sections);
    if (row.slow) row.samples.push_back(sample);
  }
  for (std::size_t run = 0; run < runs; ++run) {
    for (Row& row : rows) {
      if (!row.slow) row.samples.push_back(RunApart(program, "time", tree, row.peer));
    }
  }
  std::cout << "\n### " << Trees[tree].label << ": " << Figure(sections) << " sections, "
            << Figure(bytes) << " bytes\n\n";
  PrintTable(Trees[tree].wide ? MeasureCount : List, rows);
}

// A row for each library that has `part` in its name.
std::vector<Row> RowsOf(const std::string& part) {
  std::vector<Row> rows;
  for (std::size_t i = 0; i < Peers().size(); ++i) {
    if (Peers()[i].name.find(part) != std::string::npos) rows.push_back(Row{i, {}});
  }
  if (rows.empty()) throw std::runtime_error("no library here has \"" + part + "\" in its name");
  return rows;
}

// Our own row, and then those of each name, or of all.
std::vector<Row> Rows(std::vector<std::string> names) {
  if (names.empty()) names = {""};
  std::vector<Row> rows = RowsOf("confgrove");
  const std::size_t own = rows[0].peer;
  for (const std::string& name : names) {
    for (const Row& row : RowsOf(name)) {
      if (row.peer != own) rows.push_back(row);
    }
  }
  return rows;
}

void Main(const std::string& program, std::vector<std::string> arguments) {
  if (arguments.size() == 5 && arguments[0] == "--run") {
    RunOnce(arguments[1], std::stoul(arguments[2]), std::stoul(arguments[3]), arguments[4]);
    return;
  }
  const bool quick = !arguments.empty() && arguments[0] == "--quick";
  if (quick) arguments.erase(arguments.begin());
  const std::vector<Row> rows = Rows(arguments);
  std::cout << "ns a section, look-up and set ns a call; heap in bytes a section. Medians; in "
               "brackets how many times the first row. The clock ticks in microseconds.\n";
  for (std::size_t tree = 0; tree < (quick ? QuickTrees : Trees.size()); ++tree) {
    Compare(program, tree, rows, quick ? 3 : 7);
  }
}

}  // namespace
}  // namespace bench

int main(int count, char** arguments) try {
  bench::Main(arguments[0], {arguments + 1, arguments + count});
  return 0;
} catch (const std::exception& error) {
  std::cerr << "bench_peers: " << error.what() << "\n";
  return 1;
}
