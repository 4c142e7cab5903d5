// The clock to measure with.
#ifndef CONFGROVE_BENCH_CPU_TIME_H
#define CONFGROVE_BENCH_CPU_TIME_H

#include <time.h>

namespace bench {

// Seconds of processor time that `work` takes, the system's part included. What else the machine
// does meanwhile doesn't count.
template <class Work>
double CpuSeconds(Work work) {
  timespec start{};
  timespec end{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &start);
  work();
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &end);
  return static_cast<double>(end.tv_sec - start.tv_sec) +
         1e-9 * static_cast<double>(end.tv_nsec - start.tv_nsec);
}

}  // namespace bench

#endif
