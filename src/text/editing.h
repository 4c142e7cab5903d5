// What the parts of an edit share.
#ifndef CONFGROVE_TEXT_EDITING_H
#define CONFGROVE_TEXT_EDITING_H

#include <optional>
#include <string>
#include <vector>

#include "text/file_text.h"
#include "text/splices.h"
#include "text/style.h"
#include "text/tree_edits.h"
#include "tree/real_section.h"

namespace confgrove {

// A section of the file and the one in memory.
struct Pair {
  std::int32_t number;
  const RealSection* section;
};

class Editing {
 public:
  // Both outlive it.
  Editing(const FileText& text_file, const Remedies& all_remedies)
      : file(text_file), remedies(all_remedies) {}

  // The style of the file, which few changes ask for.
  const Style& style() {
    if (!style_) style_ = StyleOf(file);
    return *style_;
  }

  // Notes why `section` can't be written, unless there is a reason already. A null reason is none.
  void Refuse(const RealSection& section, const char* reason);

  const FileText& file;
  const Remedies& remedies;
  Splices splices;
  std::vector<EmptiedBlock> emptied;
  Obstacle obstacle;

 private:
  std::optional<Style> style_;
};

// Notes what can't be written of a section that is new in the file, or of one below it.
void CheckNew(const RealSection& section, Editing* editing);

// section_edits.cpp and tail_edits.cpp: bring the section `number` of the file to the name, the
// value and the comments of `section`. EditTail also writes a body, with all that is in it, if the
// file has none, and the value anew where it says so.
void EditName(std::int32_t number, const RealSection& section, Editing* editing);
void EditValue(std::int32_t number, const RealSection& section, Editing* editing);
void EditCommentAbove(std::int32_t number, const RealSection& section, Editing* editing);
void EditTail(std::int32_t number, const RealSection& section, Editing* editing);
bool RewritesValue(std::int32_t number, const RealSection& section, const Editing& editing);

// block_edits.cpp: take the sections out; put the new ones, `children` with the number 0, where
// they belong; remove the braces of a body that has become empty, if they are no longer needed.
struct Match;
void RemoveSections(const Match& match, Editing* editing);
void InsertSections(std::int32_t block, const Match& match, Editing* editing);
bool RemoveBody(std::int32_t number, const RealSection& section, Editing* editing);

// Notes that the block is left without sections, if it is.
void NoteIfEmptied(std::int32_t number, const RealSection& section, Editing* editing);

// remedies.cpp: the remedies around all that has been changed so far. `kept` are the sections that
// are in both, with their numbers.
void RemedyAroundChanges(const std::vector<Pair>& kept, Editing* editing);

// import_edits.cpp: the $import lines, and the head comment.
void EditImports(const RootSection& root, Editing* editing);

// The indentation of the section's line, and of the sections in its body, there or to come.
std::string IndentOf(const FileText& file, std::int32_t number);
std::string InnerIndent(const FileText& file, std::int32_t number, const Style& style);

}  // namespace confgrove

#endif
