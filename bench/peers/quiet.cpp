#include "quiet.h"

#include <sys/mman.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "cpu_time.h"

namespace bench {
namespace {

// A walk in which each step depends on the one before, so that the processor can't hurry ahead.
std::uint64_t Walk(std::vector<std::uint64_t>* memory, int steps) {
  std::uint64_t at = 1;
  for (int i = 0; i < steps; ++i) {
    at = at * 6364136223846793005 + 1442695040888963407;
    at ^= (*memory)[(at >> 33) % memory->size()]++;
  }
  return at;
}

enum class Pages { Ordinary, Large };

void TouchNewPages(std::size_t size, Pages pages) {
  void* const block =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (block == MAP_FAILED) throw std::runtime_error("no memory for the loop");
  if (pages == Pages::Large) madvise(block, size, MADV_HUGEPAGE);
  for (std::size_t i = 0; i < size; i += 4096) static_cast<volatile char*>(block)[i] = 1;
  munmap(block, size);
}

void Loop() {
  static std::vector<std::uint64_t> memory((8 << 20) / sizeof(std::uint64_t));
  if (Walk(&memory, 250000) == 0) throw std::runtime_error("the loop has lost its way");
  TouchNewPages(8 << 20, Pages::Ordinary);
}

}  // namespace

void MakeMemoryReady() { TouchNewPages(400 << 20, Pages::Large); }

double LoopSeconds() {
  const auto start = std::chrono::steady_clock::now();
  Loop();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double CalmLoopSeconds() {
  std::vector<double> turns(100);
  for (double& turn : turns) turn = CpuSeconds(Loop);
  std::sort(turns.begin(), turns.end());
  return turns[turns.size() / 10];
}

}  // namespace bench
