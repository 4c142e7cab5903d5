// The clock to measure with.
#ifndef CONFGROVE_BENCH_CPU_TIME_H
#define CONFGROVE_BENCH_CPU_TIME_H

#include <ctime>

namespace bench {

// Seconds of processor time that `work` takes, the system's part included. What else the machine
// does meanwhile doesn't count.
template <class Work>
double CpuSeconds(Work work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

}  // namespace bench

#endif
