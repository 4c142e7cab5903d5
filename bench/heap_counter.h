// Counts what the whole process takes from the heap, whoever asks for it: C, C++, any library. And
// what is mapped around the heap, page by page.
#ifndef CONFGROVE_BENCH_HEAP_COUNTER_H
#define CONFGROVE_BENCH_HEAP_COUNTER_H

namespace bench {

// Bytes as the heap hands them out: each block rounded up, with 8 bytes of the heap's own.
struct HeapUse {
  double live = 0;  // still held
  double peak = 0;  // most ever held at once
};

// Counts from here on, from 0, until StopCounting. Blocks taken before must not be freed between.
void StartCounting();
HeapUse StopCounting();

}  // namespace bench

#endif
