// Stands in front of glibc's heap. Outside of a count that costs one branch a call.
#include "heap_counter.h"

#include <malloc.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

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

// What is taken from the system itself. glibc's own calls for its heap don't come by here. The most
// is told by the next block: who maps for the sake of alignment gives the surplus back at once.
void* mmap64(void* address, std::size_t size, int protection, int flags, int file,
             off64_t offset) noexcept {
  const long mapped = syscall(SYS_mmap, address, size, protection, flags, file, offset);
  if (Counting && mapped != -1) Use.live += static_cast<double>(size);
  return reinterpret_cast<void*>(mapped);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int file,
           off_t offset) noexcept {
  return mmap64(address, size, protection, flags, file, offset);
}

int munmap(void* address, std::size_t size) noexcept {
  if (Counting) Use.live -= static_cast<double>(size);
  return static_cast<int>(syscall(SYS_munmap, address, size));
}

}  // extern "C"

namespace bench {

void StartCounting() {
  Use = {};
  Counting = true;
}

HeapUse StopCounting() {
  Counting = false;
  Use.peak = std::max(Use.peak, Use.live);
  return Use;
}

}  // namespace bench
