// RealSection: the node of a tree.
#ifndef CONFGROVE_TREE_REAL_SECTION_H
#define CONFGROVE_TREE_REAL_SECTION_H

#include <confgrove/section.h>

#include <cstdint>
#include <string_view>

#include "tree/children.h"
#include "tree/link_trail.h"
#include "tree/pool_text.h"
#include "tree/value.h"

namespace confgrove {

// One section with its value, its comments and its children.
//
// All memory of a tree, the nodes below the root included, is its root's pool: it goes with the
// root at once, and what is removed before then is given back by Release. So a node needs no
// destructor, and none is called. The name of a node stands right behind it, where a look-up reads
// both; of a root, and once it has changed, it may stand elsewhere.
class RealSection : public virtual Section {
 public:
  explicit RealSection(bool is_read_only)
      : type(SectionType::None),
        read_only(is_read_only),
        missed_child(false),
        is_array_(false),
        is_name_apart_(false) {}
  RealSection(const RealSection&) = delete;
  RealSection& operator=(const RealSection&) = delete;
  ~RealSection() override = default;

  Section* GetTop() override;

  const char* GetString(const char* path) override;
  bool GetDouble(double* out, const char* path) override;
  bool GetInt(std::int32_t* out, const char* path) override;
  bool GetBool(bool* out, const char* path) override;
  std::int32_t GetDoubles(double* buffer, std::int32_t size, const char* path) override;
  std::int32_t GetInts(std::int32_t* buffer, std::int32_t size, const char* path) override;
  SectionType GetType(const char* path) override;
  const char* GetComment(const char* path, bool is_inline) override;

  bool SetString(const char* new_text, const char* path) override;
  bool SetDouble(double number, const char* path) override;
  bool SetDoubles(const double* values, std::int32_t count, const char* path) override;
  bool SetInt(std::int32_t number, const char* path) override;
  bool SetBool(bool truth, const char* path) override;
  bool SetInts(const std::int32_t* values, std::int32_t count, const char* path) override;
  bool SetLink(const char* target, const char* path) override;
  bool SetComment(const char* new_comment, const char* path, bool is_inline) override;

  bool RemoveSection(const char* path) override;
  const char* GetName(const char* path, std::int32_t child_index) override;
  bool SetName(const char* new_name, const char* path, std::int32_t child_index) override;
  Section* GetSection(const char* path, std::int32_t child_index) override;
  std::int32_t GetSectionCount(const char* path) override;

  // The section at `path`, links not followed; null, with a message, if there is none. A root looks
  // in its imports too. Behind `path` stands a byte that no name can hold, such as a NUL. A handler
  // that gets a message may change the tree and the bytes of `path`.
  virtual RealSection* FindSection(std::string_view path);

  // The same in its own tree alone, without a message or a mark.
  RealSection* Seek(std::string_view path);

  std::int32_t child_count() const { return children != nullptr ? children->size() : 0; }

  // The child of that name; null, without a message, if there is none.
  RealSection* FindChild(std::string_view child_name) const {
    return children != nullptr ? children->Find(child_name) : nullptr;
  }

  // Makes a child, behind the others; null if there is one of that name.
  RealSection* AddChild(std::string_view child_name, bool child_read_only);

  // Gives it a type, and the value that goes with it: a text, or the path of a link's target; or
  // `count` numbers, 1 at least. Unchanged if there is no memory.
  void AssignText(SectionType text_type, std::string_view new_text);
  void AssignNumbers(const double* values, std::size_t count);

  // A comment above ends in LF, if it isn't empty.
  void SetComment(std::string_view new_comment, bool is_inline);

  // The memory of the tree.
  Pool& TreePool();

  // Whether a save gives this section a block, if an empty one: it has or had a child, or was asked
  // for one in vain.
  bool HasBlock() const { return missed_child || children != nullptr; }

  // Gives it another name, and tells nobody. Unchanged if there is no memory.
  void GiveName(std::string_view new_name, Pool& pool);

  // With a NUL behind it.
  std::string_view name() const {
    return is_name_apart_ ? extras_->name.view() : std::string_view(OwnName(), name_size_);
  }

  // The text of any type but Number, and the numbers of a Number: at least one.
  const PoolText& text() const { return value_.text(); }
  NumberList numbers() const { return is_array_ ? value_.array() : value_.number(); }

  const PoolText& comment() const { return extras_ != nullptr ? extras_->comment : NoComment; }
  const PoolText& inline_comment() const {
    return extras_ != nullptr ? extras_->inline_comment : NoComment;
  }

  // The place of a Link on LinkTrail; no other section need have one.
  LinkTrail::Mark* link_trail_mark() { return &extras_->link_trail_mark; }

  // What a look-up reads stands close together.
  Children* children = nullptr;   // null: never had one
  RealSection* parent = nullptr;  // not owned; null on a root
  std::int32_t index = 0;         // place among the siblings; Children keeps it
  SectionType type : 8;
  bool read_only : 1;     // no setter, removal or renaming works on it
  bool missed_child : 1;  // a lookup has failed here

 protected:
  // Where a path leaves the sections that there are.
  struct Miss {
    RealSection* section;   // the last one on the way
    std::string_view rest;  // of the path, from the name on that it has no child of
  };

  // The section at `path`; null, without a message, if there is none. Behind `path` stands a byte
  // that no name can hold.
  RealSection* Follow(std::string_view path, Miss* miss);

  // Sends the message of a look-up that has failed. When the handler returns, nothing that `path`
  // and this section stand in need be left.
  void ReportMiss(std::string_view path, const Miss& miss);

  // Whether this section is read-only, with a message if it is: `format` takes its name and `what`.
  bool RefusesChange(const char* format, const char* what) const;

  // Sets the name, and the key under which the section is known. False if that is taken.
  virtual bool Rename(std::string_view new_name);

  // The memory for the name of a root, behind which something else stands.
  void SetNameApart(std::string_view new_name, Pool& pool);

 private:
  // What few sections have.
  struct Extras {
    PoolText name;            // if it is apart
    PoolText comment;         // lines, each ending in LF
    PoolText inline_comment;  // on the section's own line
    PoolText former_text;     // of a Number; the host may still hold a pointer to it
    LinkTrail::Mark link_trail_mark = 0;
  };
  static const PoolText NoComment;

  // What lies behind a node for its name, which is no longer than `LongestOwnName`.
  static constexpr std::size_t LongestOwnName = 0xFFFF;
  static std::size_t SizeWithName(std::size_t size) { return sizeof(RealSection) + size + 1; }
  const char* OwnName() const { return reinterpret_cast<const char*>(this + 1); }
  char* OwnName() { return reinterpret_cast<char*>(this + 1); }
  void SetOwnName(std::string_view new_name);

  Holding Held() const {
    if (type != SectionType::Number) return Holding::Text;
    return is_array_ ? Holding::Array : Holding::Number;
  }

  RealSection* Top();
  Extras& MakeExtras(Pool& pool);
  void Release(Pool& pool);
  RealSection* MakeSection(std::string_view path);
  RealSection* BeginSet(const char* path);
  bool RemoveChild(std::string_view child_name);
  RealSection* FindTarget(const char* path);
  RealSection* FollowLinks(RealSection* found);
  RealSection* FindByIndex(const char* path, std::int32_t child_index);

  bool is_array_ : 1;  // a Number is
  bool is_name_apart_ : 1;
  std::uint16_t name_size_ = 0;  // of the name behind the node
  Value value_;
  Extras* extras_ = nullptr;  // null: none; a Link has them
};

}  // namespace confgrove

#endif
