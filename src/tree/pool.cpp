// The memory of one tree.
#include "tree/pool.h"

#include <algorithm>
#include <new>

#include "platform/platform.h"

namespace confgrove {
namespace {

constexpr std::size_t LargestHeapBlock = 256 * 1024;
constexpr std::size_t PageBlock = Platform::LargePage;
constexpr std::size_t WorthPages = PageBlock / 4;  // to be filled

}  // namespace

Pool::~Pool() {
  while (page_blocks_ != nullptr) {
    Block* next = page_blocks_->next;
    Platform::GivePagesBack(page_blocks_, PageBlock);
    page_blocks_ = next;
  }
  for (Block* list : {blocks_, large_}) {
    while (list != nullptr) {
      Block* next = list->next;
      ::operator delete(list);
      list = next;
    }
  }
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

// The memory stands behind it.
Pool::Block* Pool::TakeBlock(std::size_t size) {
  if (size != PageBlock) return blocks_ = new (::operator new(size)) Block{blocks_, nullptr};
  void* const pages = Platform::TakePages(size);
  if (pages == nullptr) throw std::bad_alloc();
  return page_blocks_ = new (pages) Block{page_blocks_, nullptr};
}

void Pool::AddBlock() {
  // A tree of which no more is known has half of its size to come.
  const std::size_t total = std::max(foreseen_, taken_ + taken_ / 2);
  const bool in_pages = total >= PageBlock && total - taken_ >= WorthPages;
  const std::size_t size = in_pages ? PageBlock : block_size_;
  free_ = reinterpret_cast<char*>(TakeBlock(size) + 1);
  free_size_ = size - sizeof(Block);
  taken_ += size;
  if (!in_pages) block_size_ = std::min(block_size_ * 2, LargestHeapBlock);
}

}  // namespace confgrove
