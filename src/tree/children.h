// The sub-sections of one section, by index and by name.
#ifndef CONFGROVE_TREE_CHILDREN_H
#define CONFGROVE_TREE_CHILDREN_H

#include <cstdint>
#include <string_view>

namespace confgrove {

class Pool;
class RealSection;

// A name to look up or to add, hashed once. Keys of the hash are drawn anew in each process, so
// that no file can be made whose names collide.
struct HashedName {
  explicit HashedName(std::string_view name);

  std::string_view text;
  std::uint32_t hash;
};

// The sections of one block, of which it keeps `index`: 0 to size() - 1, in order of creation. A
// few names are found by looking at all of them, more through a hash table with linear probing. Its
// memory is that of the tree.
class Children {
 public:
  explicit Children(Pool* tree_pool) : pool_(tree_pool) {}

  // The pool of the tree.
  Pool& pool() const { return *pool_; }

  std::int32_t size() const { return size_; }

  // The child with that index, which must exist, or with that name; null if no child has it.
  RealSection* at(std::int32_t index) const { return entries_[index].section; }
  RealSection* Find(const HashedName& name) const;

  // Adds `child` behind the others. No child may have its name, which is `name`.
  void Append(RealSection* child, const HashedName& name);

  // Takes the child with that index out; later ones move up.
  RealSection* Remove(std::int32_t index);

  // Gives the child with that index another name, which no child may have.
  void Rename(std::int32_t index, std::string_view name);

  // Gives its memory back. No use of it may follow.
  void Release();

 private:
  struct Entry {
    RealSection* section;
    std::uint32_t hash;  // of its name; a look at it spares most looks at the section
  };

  std::uint32_t Mask() const { return slot_count_ - 1; }
  void ReserveEntry();
  void ReserveSlot();
  void PutSlot(RealSection* section);
  void EmptySlot(const RealSection* section);

  Pool* pool_;                // not owned
  Entry* entries_ = nullptr;  // by index
  std::int32_t size_ = 0;
  std::int32_t capacity_ = 0;

  // The table: a power of two of slots, at most half of them filled. None while there are few
  // entries; once made it stays.
  RealSection** slots_ = nullptr;
  std::uint32_t slot_count_ = 0;
};

}  // namespace confgrove

#endif
