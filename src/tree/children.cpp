// The sub-sections of one section: the hash, the table, and the order.
#include "tree/children.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <new>

#include "platform/platform.h"
#include "tree/pool.h"
#include "tree/real_section.h"

namespace confgrove {
namespace {

constexpr std::int32_t FirstCapacity = 4;
constexpr std::int32_t MostWithoutTable = 12;
constexpr std::uint32_t SmallestTable = 32;
constexpr std::int32_t Empty = -1;  // of a slot

// Multilinear hashing: each word of the text is multiplied with a random key of its own, and the
// upper half of the sum is the hash. Two texts of up to 256 bytes collide with odds of 1 in 2^32.
constexpr std::size_t WordSize = sizeof(std::uint32_t);
constexpr std::size_t WordsAtOnce = 64;
using HashKeys = std::array<std::uint64_t, WordsAtOnce + 2>;

HashKeys DrawKeys() {
  HashKeys keys;
  std::uint64_t state = 0;
  if (!Platform::DrawNumber(&state)) {
    state = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
  }
  for (std::uint64_t& key : keys) {  // splitmix64
    state += 0x9E3779B97F4A7C15;
    key = state;
    key = (key ^ (key >> 30)) * 0xBF58476D1CE4E5B9;
    key = (key ^ (key >> 27)) * 0x94D049BB133111EB;
    key ^= key >> 31;
  }
  return keys;
}

std::uint32_t LoadWord(const char* from) {
  std::uint32_t word = 0;
  std::memcpy(&word, from, sizeof word);
  return word;
}

std::uint32_t Hash(std::string_view text) {
  static const HashKeys keys = DrawKeys();
  std::uint64_t sum = keys[0] + keys[1] * text.size();
  if (text.size() < WordSize) {
    std::uint32_t word = 0;
    for (const char c : text) word = word << 8 | static_cast<unsigned char>(c);
    sum += keys[2] * word;
  } else {
    const std::uint64_t* key = &keys[2];
    const char* last_word = text.data() + text.size() - WordSize;
    for (const char* from = text.data(); from < last_word; from += WordSize) {
      sum += *key * LoadWord(from);
      if (++key == keys.data() + keys.size() - 1) {  // go on with what there is as the first word
        sum = keys[0] + keys[2] * (sum >> 32);
        key = &keys[3];
      }
    }
    sum += *key * LoadWord(last_word);  // may share bytes with the word before
  }
  return static_cast<std::uint32_t>(sum >> 32);
}

// Tells most names of a small block apart, for less than a hash: three of the bytes, and the size.
std::uint32_t Tag(std::string_view name) {
  if (name.empty()) return 0;
  const auto byte = [name](std::size_t i) -> std::uint32_t {
    return static_cast<unsigned char>(name[i]);
  };
  const std::size_t last = name.size() - 1;
  return byte(0) | byte(last / 2) << 8 | byte(last) << 16 |
         static_cast<std::uint32_t>(name.size() & 0xFF) << 24;
}

// Compares word by word; the last one may share bytes with the one before.
template <typename Word>
bool AreSameWords(const char* text, const char* other, std::size_t size) {
  const auto differ_at = [text, other](std::size_t place) {
    Word words[2];
    std::memcpy(&words[0], text + place, sizeof(Word));
    std::memcpy(&words[1], other + place, sizeof(Word));
    return words[0] != words[1];
  };
  const std::size_t last = size - sizeof(Word);
  for (std::size_t place = 0; place < last; place += sizeof(Word)) {
    if (differ_at(place)) return false;
  }
  return !differ_at(last);
}

// Most names have one or two words, for which this takes less than a call does.
bool AreSame(std::string_view name, std::string_view other) {
  const std::size_t size = name.size();
  if (size != other.size()) return false;
  if (size >= sizeof(std::uint64_t)) {
    return AreSameWords<std::uint64_t>(name.data(), other.data(), size);
  }
  if (size >= sizeof(std::uint32_t)) {
    return AreSameWords<std::uint32_t>(name.data(), other.data(), size);
  }
  return size == 0 || AreSameWords<char>(name.data(), other.data(), size);
}

}  // namespace

inline RealSection* Children::FindTagged(std::string_view name, std::uint32_t tag) const {
  for (std::int32_t i = 0; i < size_; ++i) {
    if (tags()[i] == tag && AreSame(at(i)->name(), name)) return at(i);
  }
  return nullptr;
}

// The slot of the child of that name, or the empty one that it would get. Sections that are passed
// on the way aren't looked at: each would have to come from far away in memory.
inline std::int32_t* Children::FindSlot(std::string_view name, std::uint32_t hash) const {
  for (std::uint32_t slot = hash & Mask();; slot = (slot + 1) & Mask()) {
    const std::int32_t index = slots_[slot];
    if (index == Empty || (tags()[index] == hash && AreSame(at(index)->name(), name))) {
      return &slots_[slot];
    }
  }
}

RealSection* Children::FindAmongFew(std::string_view name) const {
  return FindTagged(name, Tag(name));
}

RealSection* Children::FindInTable(std::string_view name) const {
  const std::int32_t index = *FindSlot(name, Hash(name));
  return index != Empty ? at(index) : nullptr;
}

bool Children::Append(Children** list, Pool& pool, RealSection* child, std::string_view name) {
  Children* children = *list;
  if (children == nullptr) {
    children = new (pool.Allocate(SizeWith(FirstCapacity))) Children(&pool, FirstCapacity);
  } else if (children->size_ == children->capacity_) {
    children = children->MoveToLarger();
  }
  *list = children;
  if (children->size_ == children->MostInTable()) children->EnlargeTable();
  const std::int32_t index = children->size_;
  std::uint32_t tag = 0;
  if (children->slots_ == nullptr) {
    tag = Tag(name);
    if (children->FindTagged(name, tag) != nullptr) return false;
  } else {
    tag = Hash(name);
    std::int32_t* const slot = children->FindSlot(name, tag);
    if (*slot != Empty) return false;
    *slot = index;
  }
  ++children->size_;
  child->index = index;
  children->sections()[index] = child;
  children->tags()[index] = tag;
  return true;
}

RealSection* Children::Remove(std::int32_t index) {
  RealSection* child = at(index);
  if (slots_ != nullptr) EmptySlot(index);
  std::copy(sections() + index + 1, sections() + size_, sections() + index);
  std::copy(tags() + index + 1, tags() + size_, tags() + index);
  --size_;
  if (index == size_) return child;
  for (std::int32_t later = index; later < size_; ++later) --at(later)->index;
  std::for_each(slots_, slots_ + slot_count_,
                [index](std::int32_t& slot) { slot -= slot > index ? 1 : 0; });
  return child;
}

void Children::Rename(std::int32_t index, std::string_view name) {
  at(index)->GiveName(name, *pool_);
  if (slots_ == nullptr) {
    tags()[index] = Tag(name);
    return;
  }
  EmptySlot(index);
  tags()[index] = Hash(name);
  PutSlot(index);
}

void Children::Trim() {
  if (size_ == capacity_ || !Pool::CanTrim(SizeWith(capacity_))) return;
  const std::size_t size = SizeWith(capacity_);
  RealSection** const from = sections();
  capacity_ = size_;
  std::copy_n(from, size_, sections());
  pool_->Trim(this, size, SizeWith(capacity_));
}

void Children::Release() {
  pool_->Free(slots_, slot_count_ * sizeof *slots_);
  pool_->Free(this, SizeWith(capacity_));
}

// Gives the one that takes its place, with room for as many children again.
Children* Children::MoveToLarger() {
  const std::int32_t capacity = 2 * capacity_;
  auto* larger = new (pool_->Allocate(SizeWith(capacity))) Children(*this);
  larger->capacity_ = capacity;
  std::copy_n(sections(), size_, larger->sections());
  std::copy_n(tags(), size_, larger->tags());
  pool_->Free(this, SizeWith(capacity_));
  return larger;
}

// So many children the table has room for, or there may be without one.
std::int32_t Children::MostInTable() const {
  return slots_ == nullptr ? MostWithoutTable : static_cast<std::int32_t>(slot_count_ / 2);
}

void Children::EnlargeTable() {
  const std::uint32_t count = slots_ == nullptr ? SmallestTable : 2 * slot_count_;
  auto* slots = pool_->AllocateArray<std::int32_t>(count);
  std::fill_n(slots, count, Empty);
  if (slots_ == nullptr) {  // nobody has needed their hashes so far
    for (std::int32_t i = 0; i < size_; ++i) tags()[i] = Hash(at(i)->name());
  }
  pool_->Free(slots_, slot_count_ * sizeof *slots_);
  slots_ = slots;
  slot_count_ = count;
  for (std::int32_t i = 0; i < size_; ++i) PutSlot(i);
}

void Children::PutSlot(std::int32_t index) {
  std::uint32_t slot = tags()[index] & Mask();
  while (slots_[slot] != Empty) slot = (slot + 1) & Mask();
  slots_[slot] = index;
}

// Sections behind an empty slot would not be found, so those that may stand in it move up.
void Children::EmptySlot(std::int32_t index) {
  std::uint32_t slot = tags()[index] & Mask();
  while (slots_[slot] != index) slot = (slot + 1) & Mask();
  for (std::uint32_t next = (slot + 1) & Mask(); slots_[next] != Empty;
       next = (next + 1) & Mask()) {
    const std::uint32_t from_home = (next - tags()[slots_[next]]) & Mask();
    if (from_home < ((next - slot) & Mask())) continue;
    slots_[slot] = slots_[next];
    slot = next;
  }
  slots_[slot] = Empty;
}

}  // namespace confgrove
