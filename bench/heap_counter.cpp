// Stands in front of glibc's heap. Outside of a count that costs one branch a call.
#include "heap_counter.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

bool Counting = false;
bench::HeapUse Use;

double BlockSize(void* block) {
  return static_cast<double>(malloc_usable_size(block) + sizeof(std::size_t));
}

void* Taken(void* block) {
  if (Counting && block != nullptr) {
    Use.live += BlockSize(block);
    Use.peak = std::max(Use.peak, Use.live);
  }
  return block;
}

void Freed(void* block) {
  if (Counting && block != nullptr) Use.live -= BlockSize(block);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept { return Taken(__libc_malloc(size)); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return Taken(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) noexcept {
  Freed(block);
  return Taken(__libc_realloc(block, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Taken(__libc_memalign(alignment, size));
}

void free(void* block) noexcept {
  Freed(block);
  __libc_free(block);
}

}  // extern "C"

namespace bench {

void StartCounting() {
  Use = {};
  Counting = true;
}

HeapUse StopCounting() {
  Counting = false;
  return Use;
}

}  // namespace bench
