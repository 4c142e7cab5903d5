// How quiet the machine is.
#ifndef CONFGROVE_BENCH_PEERS_QUIET_H
#define CONFGROVE_BENCH_PEERS_QUIET_H

namespace bench {

// Seconds on the clock of the wall that a piece of work takes which is always the same: arithmetic,
// steps through 8 MiB of memory, and 8 MiB of new pages. Some 15 ms.
double LoopSeconds();

// What the loop takes while nothing disturbs it: the processor time of the tenth best of a hundred
// turns. So a machine that is busy all the time never looks quiet.
double CalmLoopSeconds();

// Has the machine put memory behind its free pages, more than any run takes. The host of a virtual
// machine may have taken back what nobody has used for two seconds; who touches that first pays for
// it, which says nothing about a library.
void MakeMemoryReady();

// A loop that takes so many times the calm one is disturbed.
constexpr double Disturbed = 1.1;

}  // namespace bench

#endif
