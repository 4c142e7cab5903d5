// Pool: the memory of one tree.
#ifndef CONFGROVE_TREE_POOL_H
#define CONFGROVE_TREE_POOL_H

#include <array>
#include <cstddef>

namespace confgrove {

// A tree consists of many small pieces that mostly go all at once. So they are cut from blocks, and
// with the pool the blocks are released, without a walk over the pieces. A piece that is freed
// earlier waits for the next of its size. Large pieces have blocks of their own.
//
// A new page of memory costs as much as reading a dozen sections. So where a tree will have two
// megabytes and more, its pool takes blocks of that size from the system, in large pages, and gives
// them back at its end.
class Pool {
 public:
  Pool() = default;
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;
  ~Pool();

  // About `bytes` will be asked for in all.
  void Foresee(std::size_t bytes) { foreseen_ = bytes; }

  // Memory for `size` bytes, aligned for pointers and doubles. Throws std::bad_alloc. What stands
  // in it gets no destructor call from the pool.
  void* Allocate(std::size_t size) {
    size = Capacity(size);
    if (size > LargestSmall) return AllocateLarge(size);
    Piece*& freed = freed_[size / Unit];
    if (freed != nullptr) {
      Piece* piece = freed;
      freed = piece->next;
      return piece;
    }
    if (size > free_size_) AddBlock();
    void* piece = free_;
    free_ += size;
    free_size_ -= size;
    return piece;
  }

  // Takes back what Allocate gave for the same size.
  void Free(void* piece, std::size_t size);

  // Takes the end of a piece back: `size` bytes were asked for, of which the first `smaller` stay.
  // Large pieces aren't divided.
  static bool CanTrim(std::size_t size) { return Capacity(size) <= LargestSmall; }
  void Trim(void* piece, std::size_t size, std::size_t smaller) {
    Free(static_cast<char*>(piece) + Capacity(smaller), Capacity(size) - Capacity(smaller));
  }

  template <typename T>
  T* AllocateArray(std::size_t count) {
    return static_cast<T*>(Allocate(count * sizeof(T)));
  }

  // The size that a piece for `size` bytes really has.
  static std::size_t Capacity(std::size_t size) { return (size + Unit - 1) / Unit * Unit; }

 private:
  static constexpr std::size_t Unit = sizeof(double);
#ifdef CONFGROVE_SEPARATE_PIECES  // every piece on the heap by itself, where sanitizers watch it
  static constexpr std::size_t LargestSmall = 0;
#else
  static constexpr std::size_t LargestSmall = 512;
#endif

  struct Piece {
    Piece* next;
  };
  struct Block {  // its memory stands behind it
    Block* next;
    Block* previous;
  };

  void* AllocateLarge(std::size_t size);
  void AddBlock();
  Block* TakeBlock(std::size_t size);

  char* free_ = nullptr;  // what is left of the newest block
  std::size_t free_size_ = 0;
  std::size_t block_size_ = 1024;  // of the next block from the heap
  std::size_t taken_ = 0;          // the size of all blocks
  std::size_t foreseen_ = 0;       // what that will be; 0 if nobody knows
  Block* blocks_ = nullptr;        // from the heap
  Block* page_blocks_ = nullptr;   // from the system
  Block* large_ = nullptr;
  std::array<Piece*, LargestSmall / Unit + 1> freed_{};  // by size in units
};

}  // namespace confgrove

#endif
