#include "contest.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "cpu_time.h"
#include "heap_counter.h"
#include "task.h"

namespace bench {
namespace {

// A library that takes so many seconds to load is asked to do it once.
constexpr double Long = 20;

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The median of what `round` gives, seconds: of 5 rounds at least, and for small trees of up to
// 100; but of no more than there is time for.
template <class Round>
double MedianSeconds(Round round) {
  std::vector<double> rounds;
  double sum = 0;
  do {
    rounds.push_back(round());
    sum += rounds.back();
  } while (rounds.size() < 100 && sum < (rounds.size() < 5 ? 2 : 0.25));
  return Median(rounds);
}

// Seconds a call: the median of up to 100 lots of 1000 calls, as many as a second has room for.
template <class Call>
double CallSeconds(std::size_t queries, Call call) {
  std::vector<double> lots;
  std::size_t done = 0;
  for (double sum = 0; lots.size() < 100 && sum < 1; sum += lots.back()) {
    lots.push_back(CpuSeconds([&] {
      for (int i = 0; i < 1000; ++i, ++done) call(done % queries);
    }));
  }
  return Median(lots) / 1000;
}

// The most memory that this process ever had, in bytes, as the system tells it. Takes no heap.
double PeakBytes() {
  char text[4096] = "";
  const int file = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  const bool is_read = file >= 0 && read(file, text, sizeof text - 1) > 0;
  if (file >= 0) close(file);
  const char* const line = is_read ? std::strstr(text, "VmHWM:") : nullptr;
  if (line == nullptr) throw std::runtime_error("/proc/self/status has no VmHWM");
  return 1024 * std::strtod(line + std::strlen("VmHWM:"), nullptr);
}

// The queries give their numbers, times `sign`.
void Check(const PeerEntry& entry, Peer* peer, const std::vector<Query>& queries, double sign) {
  peer->Bind(queries);
  for (std::size_t i = 0; i < std::min<std::size_t>(queries.size(), 1000); ++i) {
    const double expected = queries[i].value * sign;
    if (!(std::fabs(peer->Get(i) - expected) <= 1e-9 * std::fabs(expected))) {
      throw std::runtime_error(entry.name + " has a wrong number at " + queries[i].path);
    }
  }
}

// Look-ups and changes in the loaded tree: all numbers that are asked for change their sign.
void UseTree(const Task& task, const Place& place, Peer* peer, Sample* sample) {
  Sample& result = *sample;
  const std::vector<Query>& queries = task.queries;
  peer->Bind(queries);
  double sum = 0;
  result[LookUp] = CallSeconds(queries.size(), [&](std::size_t i) { sum += peer->Get(i); });
  if (std::isnan(sum)) throw std::runtime_error("a number isn't found");
  result[Set] =
      CallSeconds(queries.size(), [&](std::size_t i) { peer->Set(i, -queries[i].value); });
  result[Write] = MedianSeconds([&] {
    std::filesystem::remove(place.output);  // some file systems take their time to overwrite one
    return CpuSeconds([&] { peer->Write(place.output); });
  });
  if (task.names == 0) return;
  std::size_t names = 0;
  result[List] = MedianSeconds([&] { return CpuSeconds([&] { names += peer->List(); }); });
  if (names % task.names != 0) throw std::runtime_error("a name isn't listed");
}

}  // namespace

Sample CheckedRun(const PeerEntry& entry, const Place& place) {
  const Task task = ReadTask(place.task);
  const auto sections = static_cast<double>(task.sections);
  const std::unique_ptr<Peer> peer = entry.make();
  Sample sample{};
  StartCounting();
  const double seconds = CpuSeconds([&] { peer->Load(place.input); });
  sample[Live] = StopCounting().live / sections;
  Check(entry, peer.get(), task.queries, +1);
  if (task.names != 0 && peer->List() != task.names) {
    throw std::runtime_error(entry.name + " lists wrong names");
  }
  for (std::size_t i = 0; i < std::min<std::size_t>(task.queries.size(), 1000); ++i) {
    peer->Set(i, -task.queries[i].value);
  }
  peer->Write(place.output);
  peer->Destroy();
  if (seconds < Long) {
    peer->Load(place.output);
    Check(entry, peer.get(), task.queries, -1);
    peer->Destroy();
  }
  return sample;
}

Sample TimedRun(const PeerEntry& entry, const Place& place) {
  const std::unique_ptr<Peer> peer = entry.make();
  const auto load = [&] { peer->Load(place.input); };
  const auto destroy = [&] { peer->Destroy(); };
  Sample sample{};
  const double before = PeakBytes();
  sample[First] = CpuSeconds(load);
  sample[Peak] = PeakBytes() - before;
  if (sample[First] < Long) {
    for (int i = 0; i < 2; ++i) {
      destroy();
      load();
    }
    std::vector<double> destroyed;
    sample[Warm] = MedianSeconds([&] {
      destroyed.push_back(CpuSeconds(destroy));
      return CpuSeconds(load);
    });
    sample[Destroy] = Median(destroyed);
  }
  const Task task = ReadTask(place.task);  // now: the library began on a heap that nobody had used
  UseTree(task, place, peer.get(), &sample);
  const double last = CpuSeconds(destroy);
  if (sample[Destroy] == 0) sample[Destroy] = last;
  for (const Measure measure : {First, Warm, Write, Destroy, Peak, List}) {
    sample[measure] /= static_cast<double>(task.sections);
  }
  for (const Measure measure : {First, Warm, LookUp, Set, Write, Destroy, List}) {
    sample[measure] *= 1e9;
  }
  return sample;
}

}  // namespace bench
