// The memory of one tree.
#include "tree/pool.h"

#include <algorithm>
#include <new>

namespace confgrove {
namespace {

constexpr std::size_t LargestBlock = 256 * 1024;

}  // namespace

Pool::~Pool() {
  for (Block* list : {blocks_, large_}) {
    while (list != nullptr) {
      Block* next = list->next;
      ::operator delete(list);
      list = next;
    }
  }
}

void* Pool::Allocate(std::size_t size) {
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

void Pool::Free(void* piece, std::size_t size) {
  size = Capacity(size);
  if (size == 0) return;
  if (size <= LargestSmall) {
    freed_[size / Unit] = new (piece) Piece{freed_[size / Unit]};
    return;
  }
  Block* block = static_cast<Block*>(piece) - 1;
  if (block->next != nullptr) block->next->previous = block->previous;
  (block->previous != nullptr ? block->previous->next : large_) = block->next;
  ::operator delete(block);
}

void* Pool::AllocateLarge(std::size_t size) {
  large_ = new (::operator new(sizeof(Block) + size)) Block{large_, nullptr};
  if (large_->next != nullptr) large_->next->previous = large_;
  return large_ + 1;
}

void Pool::AddBlock() {
  blocks_ = new (::operator new(sizeof(Block) + block_size_)) Block{blocks_, nullptr};
  free_ = reinterpret_cast<char*>(blocks_ + 1);
  free_size_ = block_size_;
  block_size_ = std::min(block_size_ * 2, LargestBlock);
}

}  // namespace confgrove
