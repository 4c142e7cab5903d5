#include "contest.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "cpu_time.h"
#include "files.h"
#include "heap_counter.h"

namespace bench {
namespace {

template <class Work>
double Time(Work work) {
  return 1e9 * CpuSeconds(work);
}

// ns a call over 100,000 calls, or as many as a second has room for.
template <class Call>
double TimeCalls(std::size_t queries, Call call) {
  std::size_t done = 0;
  double elapsed = 0;
  while (done < 100000 && elapsed < 1e9) {
    elapsed += Time([&] {
      for (int i = 0; i < 1000; ++i, ++done) call(done % queries);
    });
  }
  return elapsed / static_cast<double>(done);
}

class Contest {
 public:
  // What it makes stays until its end, so that the library starts on a heap without holes.
  Contest(const PeerEntry& entry, const Tree& tree)
      : name(entry.name), wide(tree.wide), peer(entry.make()), root(tree.make(tree.size)) {
    const std::size_t count = CountSections(root);
    sections = static_cast<double>(count);
    queries = MakeQueries(root, std::min<std::size_t>(count, 100000));
    const std::string text = peer->Text(root);
    WriteFile(input, text.data(), text.size());
  }

  Sample RunChecked() {
    Sample sample{};
    StartCounting();
    sample[Parse] = Time([this] { peer->Load(input); }) / sections;
    const HeapUse heap = StopCounting();
    sample[Live] = heap.live / sections;
    sample[Peak] = heap.peak / sections;
    Check(+1);
    Use(1, &sample);
    if (!peer->IsYardstick() && !IsSlow(sample, sections)) {
      peer->Load(output);
      Check(-1);
      peer->Destroy();
    }
    return sample;
  }

  Sample RunTimed() {
    Sample sample{};
    const int rounds = std::max(1, static_cast<int>(200000 / sections));
    double parse = 0;
    double destroy = 0;
    for (int round = 0; round < rounds; ++round) {
      if (round > 0) destroy += Time([this] { peer->Destroy(); });
      parse += Time([this] { peer->Load(input); });
    }
    sample[Parse] = parse / rounds / sections;
    Use(rounds, &sample);
    sample[Destroy] = (sample[Destroy] + destroy / sections) / rounds;
    return sample;
  }

 private:
  // The life of a loaded tree, to its end. All queried numbers change their sign.
  void Use(int rounds, Sample* sample) {
    Sample& result = *sample;
    peer->Bind(queries);
    double sum = 0;
    result[LookUp] = TimeCalls(queries.size(), [&](std::size_t i) { sum += peer->Get(i); });
    if (std::isnan(sum)) throw std::runtime_error(name + " fails to find numbers");
    result[Set] =
        TimeCalls(queries.size(), [this](std::size_t i) { peer->Set(i, -queries[i].value); });
    for (int round = 0; round < rounds && !peer->IsYardstick(); ++round) {
      std::filesystem::remove(output);  // some file systems take their time to overwrite one
      result[Write] += Time([this] { peer->Write(output); }) / sections / rounds;
    }
    if (wide) {
      std::size_t bytes = 0;
      for (int round = 0; round < 10; ++round) {
        result[List] += Time([&] { bytes += peer->List(); }) / sections / 10;
      }
      if (bytes != 10 * NameBytes()) throw std::runtime_error(name + " lists wrong names");
    }
    result[Destroy] = Time([this] { peer->Destroy(); }) / sections;
  }

  // The queries give their numbers, times `sign`.
  void Check(double sign) {
    peer->Bind(queries);
    for (std::size_t i = 0; i < std::min<std::size_t>(queries.size(), 1000); ++i) {
      const double expected = queries[i].value * sign;
      if (!(std::fabs(peer->Get(i) - expected) <= 1e-9 * std::fabs(expected))) {
        throw std::runtime_error(name + " has a wrong number at " + queries[i].path);
      }
    }
  }

  std::size_t NameBytes() const {
    std::size_t bytes = 0;
    for (const Node& node : root.children[0].children[0].children) bytes += node.name.size();
    return bytes;
  }

  const std::string name;
  const bool wide;
  const std::unique_ptr<Peer> peer;
  const Node root;
  std::vector<Query> queries;
  double sections = 0;
  const TemporaryDirectory directory;
  const std::string input = directory.File("tree.txt");
  const std::string output = directory.File("written.txt");
};

}  // namespace

const std::vector<Tree> Trees = {{"8 KB", MakeTree, Sections8K, false},
                                 {"1 MB", MakeTree, Sections1M, false},
                                 {"200 levels", MakeDeepTree, 200, false},
                                 {"16 MB", MakeTree, Sections16M, false},
                                 {"100,000 in one block", MakeWideTree, 100000, true}};

bool IsSlow(const Sample& sample, double sections) { return sample[Parse] * sections > 20e9; }

Sample CheckedRun(const PeerEntry& entry, const Tree& tree) {
  return Contest(entry, tree).RunChecked();
}

Sample TimedRun(const PeerEntry& entry, const Tree& tree) {
  return Contest(entry, tree).RunTimed();
}

}  // namespace bench
