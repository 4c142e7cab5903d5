// SPDX-License-Identifier: MIT
// SaveInPlace: a save that touches what has changed, and nothing else.
#ifndef CONFGROVE_SAVE_IN_PLACE_H
#define CONFGROVE_SAVE_IN_PLACE_H

#include <confgrove/config.h>
#include <confgrove/export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove {

// A change of a text: `length` bytes from `offset` on, counted from 0, give way to `text`.
struct Edit {
  std::size_t offset = 0;
  std::size_t length = 0;
  std::string text;
};

// What a save does with a file that isn't as it was when the configuration was read, or that can't
// be read as one.
enum class Conflict : std::int32_t {
  Refuse = 0,
  MergeOver = 1,  // what the file has come to is edited until it says what the tree says; a faulty
                  // file is still refused
  Replace = 2     // the whole file is written anew, in canonical form
};

enum class SaveOutcome : std::int32_t {
  Unchanged = 0,  // the file says what the tree says: it wasn't touched
  Written = 1,
  Refused = 2  // the file wasn't touched; `reason` says why
};

// A block without a value that a save leaves without sections. It stands in the file, empty, until
// its section is removed too.
struct EmptiedBlock {
  std::string path;         // in the tree
  bool holds_more = false;  // a comment of its own, or an import, still stands in it
};

struct SaveResult {
  SaveOutcome outcome = SaveOutcome::Refused;
  std::int32_t line = 0;    // of a faulty file, where the first fault is; 0 otherwise
  std::string file;         // the path of the file
  std::string reason;       // of a refusal, in plain words; "" otherwise
  std::string section;      // its path, if one section is the reason; "" otherwise
  std::vector<Edit> edits;  // what was done, or would be: in order, apart from each other. Offsets
                            // count the bytes of the file as it was on the disk
  std::vector<EmptiedBlock> emptied;  // by what was done, or would be
  bool file_changed = false;  // the file wasn't as it was when the configuration was read; by
                              // EditFile or FormatFile, another program has changed it meanwhile

  // Whether the file now says what the tree says.
  explicit operator bool() const { return outcome != SaveOutcome::Refused; }
};

// Brings the file of `config`, OwnFile(config), to what its tree says. Values that are equal keep
// their bytes, and so does all that no section keeps: layout, block comments, comments that stand
// alone. A file that doesn't exist yet is written in canonical form, with all digits.
//
// The new text is read back before it takes the place of the old one: if it doesn't give the tree,
// the save is refused, and the result names the section that a file can't hold. The file is
// replaced at once or not at all; its mode, owner and extended attributes stay, and symbolic links
// lead on to it. Saves of several programs wait for each other.
//
// A read-only configuration is refused. No message is sent, no exception but std::bad_alloc thrown.
// `config` must not be null.
[[nodiscard]] CONFGROVE_API SaveResult SaveInPlace(Config* config,
                                                   Conflict conflict = Conflict::Refuse);

// What SaveInPlace would do; nothing is written.
[[nodiscard]] CONFGROVE_API SaveResult PreviewSave(Config* config,
                                                   Conflict conflict = Conflict::Refuse);

// Gives a file the canonical layout and loses nothing: block comments, comments that no section
// keeps, the spelling of numbers and empty blocks stay. Refused for a faulty file. `file` is a path
// of the system.
[[nodiscard]] CONFGROVE_API SaveResult FormatFile(const std::string& file);
[[nodiscard]] CONFGROVE_API SaveResult PreviewFormat(const std::string& file);

// Replaces `file` as SaveInPlace does by its text with `edits` made, which are in order and apart
// from each other. Refused if one lies outside of the file, or the file no longer has `size` bytes.
[[nodiscard]] CONFGROVE_API SaveResult EditFile(const std::string& file, std::size_t size,
                                                const std::vector<Edit>& edits);

// `text` with the edits made.
CONFGROVE_API std::string Apply(std::string_view text, const std::vector<Edit>& edits);

}  // namespace confgrove

#endif
