// The sub-sections of one section: the hash, the table, and the order.
#include "tree/children.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/platform.h"
#include "tree/pool.h"
#include "tree/real_section.h"

namespace confgrove {
namespace {

constexpr std::int32_t FirstCapacity = 4;
constexpr std::int32_t MostWithoutTable = 12;
constexpr std::uint32_t SmallestTable = 64;

// What a slot holds that leads to no entry. A search goes on behind a removed one.
constexpr std::uint32_t FreeSlot = 0xFFFFFFFF;
constexpr std::uint32_t RemovedSlot = 0xFFFFFFFE;

// Multilinear hashing: each word of the text is multiplied with a random key of its own, and the
// upper half of the sum is the hash. For any two texts the odds of a collision are 1 in 2^32.
constexpr std::size_t WordsAtOnce = 64;
using HashKeys = std::array<std::uint64_t, WordsAtOnce + 2>;

HashKeys DrawKeys() {
  HashKeys keys;
  std::uint64_t state = Platform::RandomSeed();
  for (std::uint64_t& key : keys) {  // splitmix64
    state += 0x9E3779B97F4A7C15;
    key = state;
    key = (key ^ (key >> 30)) * 0xBF58476D1CE4E5B9;
    key = (key ^ (key >> 27)) * 0x94D049BB133111EB;
    key ^= key >> 31;
  }
  return keys;
}

std::uint32_t Hash(std::string_view text) {
  static const HashKeys keys = DrawKeys();
  constexpr std::size_t WordSize = sizeof(std::uint32_t);
  std::uint64_t sum = keys[0] + keys[1] * text.size();
  std::size_t word_count = 2;
  const char* from = text.data();
  std::size_t left = text.size();
  while (left > 0) {
    std::uint32_t word = 0;
    const std::size_t size = std::min(left, WordSize);
    if (size == WordSize) {
      std::memcpy(&word, from, WordSize);
    } else {
      for (std::size_t i = 0; i < size; ++i) word = word << 8 | static_cast<unsigned char>(from[i]);
    }
    from += size;
    left -= size;
    sum += keys[word_count] * word;
    if (++word_count == keys.size()) {  // go on with what there is as the first word
      sum = keys[0] + keys[2] * (sum >> 32);
      word_count = 3;
    }
  }
  return static_cast<std::uint32_t>(sum >> 32);
}

}  // namespace

HashedName::HashedName(std::string_view name) : text(name), hash(Hash(name)) {}

RealSection* Children::Find(const HashedName& name) const {
  if (slots_ == nullptr) {
    for (const Entry* entry = entries_; entry != entries_ + size_; ++entry) {
      if (entry->hash == name.hash && entry->section->name.view() == name.text) {
        return entry->section;
      }
    }
    return nullptr;
  }
  for (std::uint32_t slot = name.hash & Mask(); slots_[slot] != FreeSlot;
       slot = (slot + 1) & Mask()) {
    if (slots_[slot] == RemovedSlot) continue;
    const Entry& entry = entries_[slots_[slot]];
    if (entry.hash == name.hash && entry.section->name.view() == name.text) return entry.section;
  }
  return nullptr;
}

void Children::Append(RealSection* child, const HashedName& name, Pool& pool) {
  ReserveEntry(pool);
  if (slots_ != nullptr || size_ >= MostWithoutTable) ReserveSlot(pool);
  child->index = size_;
  entries_[size_] = {child, name.hash};
  if (slots_ != nullptr) PutSlot(name.hash, static_cast<std::uint32_t>(size_));
  ++size_;
}

RealSection* Children::Remove(std::int32_t index) {
  const auto place = static_cast<std::uint32_t>(index);
  if (slots_ != nullptr) EmptySlot(place);
  RealSection* child = entries_[index].section;
  std::copy(entries_ + index + 1, entries_ + size_, entries_ + index);
  --size_;
  if (index == size_) return child;
  for (std::int32_t later = index; later < size_; ++later) --entries_[later].section->index;
  for (std::uint32_t slot = 0; slot < slot_count_; ++slot) {
    if (slots_[slot] > place && slots_[slot] < RemovedSlot) --slots_[slot];
  }
  return child;
}

void Children::Rename(std::int32_t index, std::string_view name, Pool& pool) {
  const HashedName new_name(name);
  Entry& entry = entries_[index];
  if (slots_ != nullptr) ReserveSlot(pool);
  entry.section->name.Assign(name, pool);
  if (slots_ != nullptr) {
    EmptySlot(static_cast<std::uint32_t>(index));
    PutSlot(new_name.hash, static_cast<std::uint32_t>(index));
  }
  entry.hash = new_name.hash;
}

void Children::Release(Pool& pool) {
  pool.Free(entries_, static_cast<std::size_t>(capacity_) * sizeof(Entry));
  pool.Free(slots_, slot_count_ * sizeof *slots_);
  *this = Children();
}

void Children::ReserveEntry(Pool& pool) {
  if (size_ < capacity_) return;
  const std::int32_t capacity = capacity_ > 0 ? 2 * capacity_ : FirstCapacity;
  auto* entries = pool.AllocateArray<Entry>(static_cast<std::size_t>(capacity));
  std::copy_n(entries_, size_, entries);
  pool.Free(entries_, static_cast<std::size_t>(capacity_) * sizeof(Entry));
  entries_ = entries;
  capacity_ = capacity;
}

// Makes room in the table for one entry more. It is kept at most half full; slots that led to
// removed entries count until the table is made anew.
void Children::ReserveSlot(Pool& pool) {
  if ((used_slots_ + 1) * std::uint64_t{2} <= slot_count_) return;
  std::uint32_t count = SmallestTable;
  while (count < (static_cast<std::uint64_t>(size_) + 1) * 3) count *= 2;
  auto* slots = pool.AllocateArray<std::uint32_t>(count);
  std::fill_n(slots, count, FreeSlot);
  pool.Free(slots_, slot_count_ * sizeof *slots_);
  slots_ = slots;
  slot_count_ = count;
  used_slots_ = 0;
  for (std::int32_t place = 0; place < size_; ++place) {
    PutSlot(entries_[place].hash, static_cast<std::uint32_t>(place));
  }
}

void Children::PutSlot(std::uint32_t hash, std::uint32_t place) {
  std::uint32_t slot = hash & Mask();
  while (slots_[slot] != FreeSlot) slot = (slot + 1) & Mask();
  slots_[slot] = place;
  ++used_slots_;
}

void Children::EmptySlot(std::uint32_t place) {
  std::uint32_t slot = entries_[place].hash & Mask();
  while (slots_[slot] != place) slot = (slot + 1) & Mask();
  slots_[slot] = RemovedSlot;
}

}  // namespace confgrove
