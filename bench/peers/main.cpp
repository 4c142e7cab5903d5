// Gives every library the same trees and prints a table for each tree, in Markdown.
//
//   bench_peers [--quick] [--repeats N] [--tree TREE]... [PEER...]
//                                                   TREE and PEER are parts of names
//   bench_peers --run KIND PEER INPUT OUTPUT TASK   one run; the first form calls this
//
// Each run is a process of its own, so that none finds the heap as another left it. The runs go
// round: the first of each library, then the second of each. A run that was disturbed by what else
// goes on in the machine is repeated.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "contest.h"
#include "files.h"
#include "quiet.h"
#include "table.h"
#include "task.h"

namespace bench {
namespace {

struct Tree {
  const char* label;
  Node (*make)(std::size_t);
  std::size_t size;
  enum { Ordinary, Wide, Huge } shape;  // Wide has a block to list, Huge is for the fastest alone
  bool quick;                           // belongs to a quick comparison
};

constexpr Tree Trees[] = {{"8 KB", MakeTree, Sections8K, Tree::Ordinary, true},
                          {"1 MB", MakeTree, Sections1M, Tree::Ordinary, true},
                          {"16 MB", MakeTree, Sections16M, Tree::Ordinary, false},
                          {"64 MB", MakeTree, Sections64M, Tree::Huge, false},
                          {"200 levels", MakeDeepTree, 200, Tree::Ordinary, true},
                          {"100,000 in one block", MakeWideTree, 100000, Tree::Wide, false}};

constexpr const char* Fastest[] = {"confgrove", "pugixml"};

// How many loops a run waits for a quiet machine.
constexpr int Patience = 20;

struct Options {
  std::string program;
  std::size_t runs = 7;
  int repeats = 2;  // of a run that was disturbed
  bool quick = false;
  std::vector<std::string> trees;
  std::vector<std::string> peers;
};

bool IsPart(const std::vector<std::string>& parts, const std::string& name) {
  return parts.empty() || std::any_of(parts.begin(), parts.end(), [&](const std::string& part) {
           return name.find(part) != std::string::npos;
         });
}

Sample RunApart(const std::string& program, const char* kind, const PeerEntry& peer,
                const Place& place) {
  std::string command = "\"" + program + "\" --run " + kind;
  for (const std::string& argument : {peer.name, place.input, place.output, place.task}) {
    command += " \"" + argument + "\"";
  }
  std::FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  Sample sample{};
  std::size_t count = 0;
  while (count < MeasureCount && std::fscanf(pipe, "%lf", &sample[count]) == 1) ++count;
  if (pclose(pipe) != 0 || count < MeasureCount)
    throw std::runtime_error(peer.name + " has failed");
  return sample;
}

void Run(const std::string& kind, const std::string& name, const Place& place) {
  const auto& peers = Peers();
  const auto is_it = [&](const PeerEntry& entry) { return entry.name == name; };
  const auto peer = std::find_if(peers.begin(), peers.end(), is_it);
  if (peer == peers.end()) throw std::runtime_error("there is no " + name);
  const Sample sample = (kind == "check" ? CheckedRun : TimedRun)(*peer, place);
  for (const double value : sample) std::printf("%.17g\n", value);
}

class Comparison {
 public:
  explicit Comparison(Options options) : options_(std::move(options)), calm_(CalmLoopSeconds()) {}

  void Compare(const Tree& tree) {
    const TemporaryDirectory directory;
    std::vector<Row> rows = Rows(tree.shape == Tree::Huge);
    if (rows.empty()) return;
    std::cout << "\n### " << tree.label << ": " << Prepare(tree, rows, directory) << "\n\n";
    for (Row& row : rows) {
      row.live = RunApart(options_.program, "check", *row.peer, PlaceOf(row, directory))[Live];
    }
    for (std::size_t run = 0; run < options_.runs; ++run) {
      for (Row& row : rows) {
        if (run == 0 || row.samples[0][Warm] > 0) AddSample(&row, PlaceOf(row, directory));
      }
    }
    PrintTable(rows);
  }

  void PrintNoise() const {
    std::printf(
        "\nThe loop takes %.1f ms undisturbed. Of %d runs %d were disturbed and repeated, %d of "
        "them in "
        "vain.\n",
        1000 * calm_, runs_, repeated_, kept_);
  }

 private:
  // Ours, and then the others that are wanted.
  std::vector<Row> Rows(bool is_huge) const {
    std::vector<Row> rows;
    for (const PeerEntry& peer : Peers()) {
      const bool is_ours = peer.name == "confgrove";
      const bool is_fast =
          std::find(std::begin(Fastest), std::end(Fastest), peer.name) != std::end(Fastest);
      if (!is_ours && (!IsPart(options_.peers, peer.name) || (is_huge && !is_fast))) continue;
      rows.insert(is_ours ? rows.begin() : rows.end(), Row{&peer, {}});
    }
    return rows;
  }

  static Place PlaceOf(const Row& row, const TemporaryDirectory& directory) {
    const std::string number = std::to_string(row.peer - Peers().data());
    return {directory.File("tree" + number + ".txt"), directory.File("written" + number + ".txt"),
            directory.File("task")};
  }

  // Writes the tree for each row, and what to ask of it. Gives its size in words.
  static std::string Prepare(const Tree& tree, const std::vector<Row>& rows,
                             const TemporaryDirectory& directory) {
    const Node root = tree.make(tree.size);
    std::string size;
    for (const Row& row : rows) {
      const std::string text = row.peer->make()->Text(root);
      WriteFile(PlaceOf(row, directory).input, text.data(), text.size());
      if (size.empty()) size = Figure(static_cast<double>(text.size()));
    }
    const Task task = MakeTask(root, tree.shape == Tree::Wide);
    WriteTask(task, directory.File("task"));
    return Figure(static_cast<double>(task.sections)) + " sections, " + size + " bytes";
  }

  void AddSample(Row* row, const Place& place) {
    ++runs_;
    bool is_disturbed = true;
    Sample sample{};
    for (int attempt = 0; is_disturbed && attempt <= options_.repeats; ++attempt) {
      for (int loop = 0; loop < Patience && IsDisturbed(); ++loop) continue;
      MakeMemoryReady();
      sample = RunApart(options_.program, "time", *row->peer, place);
      is_disturbed = IsDisturbed();
      repeated_ += is_disturbed && attempt == 0;
    }
    row->disturbed += is_disturbed;
    kept_ += is_disturbed;
    row->samples.push_back(sample);
  }

  // One loop alone may be unlucky.
  bool IsDisturbed() const {
    return std::min({LoopSeconds(), LoopSeconds(), LoopSeconds()}) > Disturbed * calm_;
  }

  const Options options_;
  const double calm_;
  int runs_ = 0;
  int repeated_ = 0;  // of the runs
  int kept_ = 0;      // of those
};

Options Parse(const std::string& program, const std::vector<std::string>& arguments) {
  Options options;
  options.program = program;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--quick") {
      options.quick = true;
      options.runs = 3;
      options.repeats = 1;
    } else if (arguments[i] == "--tree" && i + 1 < arguments.size()) {
      options.trees.push_back(arguments[++i]);
    } else if (arguments[i] == "--repeats" && i + 1 < arguments.size()) {
      options.repeats = std::stoi(arguments[++i]);
    } else if (arguments[i].rfind('-', 0) != 0) {
      options.peers.push_back(arguments[i]);
    } else {
      throw std::runtime_error("no such option: " + arguments[i]);
    }
  }
  return options;
}

void Main(const std::string& program, const std::vector<std::string>& arguments) {
  if (arguments.size() == 6 && arguments[0] == "--run") {
    Run(arguments[1], arguments[2], {arguments[3], arguments[4], arguments[5]});
    return;
  }
  const Options options = Parse(program, arguments);
  Comparison comparison(options);
  for (const Tree& tree : Trees) {
    const bool is_wanted =
        options.trees.empty() ? tree.quick || !options.quick : IsPart(options.trees, tree.label);
    if (is_wanted) comparison.Compare(tree);
  }
  comparison.PrintNoise();
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
