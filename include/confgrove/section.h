// SPDX-License-Identifier: MIT
// Section: one named thing of a configuration, and all that can be asked of it and done to it.
#ifndef CONFGROVE_SECTION_H
#define CONFGROVE_SECTION_H

#include <confgrove/export.h>

#include <cstdint>

// What kind of value a section holds. A block without a value of its own has None.
enum class SectionType : std::int32_t { None = 0, String = 1, Number = 2, Link = 3 };

// One named thing of a configuration: a value, a block of further sections, or both at once.
//
// `path` is names joined by dots, relative to this section: "limits.rate". "" is this section.
// Blanks around it don't count. It holds ASCII letters, digits, '_' and the CP1251 Cyrillic
// letters, and begins with a letter or '_'.
//
// Texts are NUL-terminated bytes, never null; those that go in are copied. A text that comes out
// points into the tree: don't free it. It is good until it is changed or its section goes. A
// Section* lives as long as its section, and is deleted by RemoveSection, not by its holder.
//
// Failure is the result described with each function; a message goes to the trace handler (see
// Io::SetTraceHandler) where there is more to say. Nothing is thrown but std::bad_alloc.
//
// A link stands for the section that its path names from the top of this tree. The Get... functions
// for values follow links, to any number; comments, names and all changes don't.
//
// On the root of a configuration, what reads (values, comments, GetName, GetSection,
// GetSectionCount) and SetName look in the file's own tree and then in the imported files, in the
// order of their names. On any other section they look below that section alone.
//
// One thread at a time for all configurations of the process, reads included.
class CONFGROVE_API Section {
 public:
  virtual ~Section() {}

  // The root of the file that holds this section. Never null.
  virtual Section* GetTop() = 0;

  // The text at `path`; null if there is no such section, it holds no text, or its links run in a
  // circle.
  virtual const char* GetString(const char* path) = 0;

  // Stores the number at `path`, the first one of an array, in `*out`. False, `*out` untouched, if
  // there is no such section, it holds no number, or its links run in a circle.
  virtual bool GetDouble(double* out, const char* path) = 0;

  // As GetDouble, truncated toward zero: 2.9 gives 2. What doesn't fit, and NaN, give -2147483648.
  virtual bool GetInt(std::int32_t* out, const char* path) = 0;

  // As GetDouble: whether the number differs from 0.
  virtual bool GetBool(bool* out, const char* path) = 0;

  // Copies the numbers at `path` into `buffer`, which has room for `size` of them. Returns how many
  // were copied: 0 if there is no such section or it holds no numbers. With a null `buffer` or
  // `size` 0 it copies nothing and returns how many there are.
  virtual std::int32_t GetDoubles(double* buffer, std::int32_t size, const char* path) = 0;

  // As GetDoubles, each number truncated as by GetInt; but `buffer` must not be null, and a `size`
  // below 1 gives 0.
  virtual std::int32_t GetInts(std::int32_t* buffer, std::int32_t size, const char* path) = 0;

  // The kind of value at `path`, never Link. None also if there is no such section, or its links
  // run in a circle.
  virtual SectionType GetType(const char* path) = 0;

  // The comment of the section at `path`: the lines above it, each ending in LF, or the one behind
  // it on its own line. "" if it has none; null if there is no such section. A link gives its own
  // comment.
  virtual const char* GetComment(const char* path, bool inline_comment = false) = 0;

  // The setters give the section at `path` a value in place of the one it had, and make the
  // sections along the path that don't exist, at the end of their block, in this file's tree. What
  // else the section holds stays. False if this section is read-only, the path is no path or leads
  // deeper than 1000 sections below the root; sections made on the way stay.
  virtual bool SetString(const char* value, const char* path) = 0;
  virtual bool SetDouble(double value, const char* path) = 0;

  // `count` numbers, copied from `values`. False too if `values` is null or `count` is below 1.
  virtual bool SetDoubles(const double* values, std::int32_t count, const char* path) = 0;
  virtual bool SetInt(std::int32_t value, const char* path) = 0;

  // Stores the number 1 or 0.
  virtual bool SetBool(bool value, const char* path) = 0;

  // `count` numbers, copied from `values`. False too if `values` is null or `count` is below 1.
  virtual bool SetInts(const std::int32_t* values, std::int32_t count, const char* path) = 0;

  // Makes the section stand for the one at `target`, a path from the top. `target` isn't tested.
  virtual bool SetLink(const char* target, const char* path) = 0;

  // Replaces the comment above the section, of one line or more, or the one behind it, of which
  // the first line counts. A line above comes without '#' and keeps a blank in front of its text;
  // a line end is added to the last.
  virtual bool SetComment(const char* comment, const char* path, bool inline_comment = false) = 0;

  // Removes the section at `path` and all below it; later siblings move up by one `index`. No
  // pointer into it may be used afterwards. False if there is no such section in this tree or it
  // is read-only. With "" a section removes itself, and a root destroys the whole configuration
  // with all it imports, read-only or not, and returns true.
  virtual bool RemoveSection(const char* path) = 0;

  // In the next three a negative `index` means the section at `path`, and 0 or more means its child
  // at that place. Children count from 0 in the order in which they were made.

  // The section's name; null if there is none. A root's name is that of its file.
  virtual const char* GetName(const char* path, std::int32_t index = -1) = 0;

  // Renames the section, in its place. False if this section is read-only, `name` is empty, no such
  // section exists or a sibling has that name. `name` isn't tested further: one that is no name
  // makes a section that no path finds and no file can hold. A root so renamed belongs to another
  // file.
  virtual bool SetName(const char* name, const char* path, std::int32_t index = -1) = 0;

  // The section itself; null if there is none. Owned by the tree.
  virtual Section* GetSection(const char* path, std::int32_t index = -1) = 0;

  // How many children the section at `path` has; -1 if there is no such section.
  virtual std::int32_t GetSectionCount(const char* path) = 0;
};

#endif
