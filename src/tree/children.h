// The sub-sections of one section, by index and by name.
#ifndef CONFGROVE_TREE_CHILDREN_H
#define CONFGROVE_TREE_CHILDREN_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace confgrove {

class Pool;
class RealSection;

// The sections of one block, of which it keeps `index`: 0 to size() - 1, in order of creation. A
// few names are found by looking at all of them, more through a hash table with linear probing.
// Keys of the hash are drawn anew in each process, so that no file can be made whose names collide.
// It lies in the pool of the tree with the tags of the names and the sections right behind it,
// where a look-up reads them.
class Children {
 public:
  // Adds `child` behind the others of `*list`, which is made if it is null, and may move. False if
  // there is a child of its name, which is `name`. Nothing has changed then, or if there is no
  // memory.
  static bool Append(Children** list, Pool& pool, RealSection* child, std::string_view name);

  // The pool of the tree.
  Pool& pool() const { return *pool_; }

  std::int32_t size() const { return size_; }

  // All of them, by index.
  RealSection* const* begin() const { return sections(); }
  RealSection* const* end() const { return sections() + size_; }

  // The child with that index, which must exist, or with that name; null if no child has it.
  RealSection* at(std::int32_t index) const { return sections()[index]; }
  RealSection* Find(std::string_view name) const {
    return slots_ == nullptr ? FindAmongFew(name) : FindInTable(name);
  }

  // Takes the child with that index out; later ones move up.
  RealSection* Remove(std::int32_t index);

  // Gives the child with that index another name, which no child may have.
  void Rename(std::int32_t index, std::string_view name);

  // No child comes for some time: the room for more goes back.
  void Trim();

  // Gives its memory back. No use of it may follow.
  void Release();

 private:
  Children(Pool* tree_pool, std::int32_t capacity) : pool_(tree_pool), capacity_(capacity) {}

  // So many tags have room: an even number, so that what follows is aligned for pointers.
  static std::size_t TagCount(std::int32_t capacity) {
    return (static_cast<std::size_t>(capacity) + 1) / 2 * 2;
  }
  static std::size_t SizeWith(std::int32_t capacity) {
    return sizeof(Children) + TagCount(capacity) * sizeof(std::uint32_t) +
           static_cast<std::size_t>(capacity) * sizeof(RealSection*);
  }

  // By index. A look at the tag spares most looks at the section: it is the hash of the name if
  // there is a table, and else less than that.
  std::uint32_t* tags() { return reinterpret_cast<std::uint32_t*>(this + 1); }
  const std::uint32_t* tags() const { return reinterpret_cast<const std::uint32_t*>(this + 1); }
  RealSection** sections() { return reinterpret_cast<RealSection**>(tags() + TagCount(capacity_)); }
  RealSection* const* sections() const {
    return reinterpret_cast<RealSection* const*>(tags() + TagCount(capacity_));
  }

  std::uint32_t Mask() const { return slot_count_ - 1; }
  RealSection* FindAmongFew(std::string_view name) const;
  RealSection* FindInTable(std::string_view name) const;
  RealSection* FindTagged(std::string_view name, std::uint32_t tag) const;
  std::int32_t* FindSlot(std::string_view name, std::uint32_t hash) const;
  Children* MoveToLarger();
  std::int32_t MostInTable() const;
  void EnlargeTable();
  void PutSlot(std::int32_t index);
  void EmptySlot(std::int32_t index);

  Pool* pool_;  // not owned
  std::int32_t size_ = 0;
  std::int32_t capacity_;  // for so many sections there is room

  // The table: a power of two of slots, at most half of them filled with an index. None while there
  // are few sections; once made it stays.
  std::int32_t* slots_ = nullptr;
  std::uint32_t slot_count_ = 0;
};

}  // namespace confgrove

#endif
