// What must change in a file for it to say what a tree says.
#ifndef CONFGROVE_TEXT_TREE_EDITS_H
#define CONFGROVE_TEXT_TREE_EDITS_H

#include <string>
#include <vector>

#include "text/file_text.h"
#include "text/splices.h"
#include "tree/root_section.h"

namespace confgrove {

// Why a tree can't be brought into a file.
struct Obstacle {
  std::string section;  // its path; "" if it isn't about one
  std::string reason;   // "" if there is none
};

struct TreeEdits {
  std::vector<Edit> edits;
  std::vector<EmptiedBlock> emptied;
  Obstacle obstacle;  // what a file can't hold, as far as a look at each change shows it
};

// What the first attempt has shown to be needed besides.
struct Remedies {
  // Inline comments of these sections move from behind their bodies to in front of them.
  std::vector<const RealSection*> displaced;

  // Where something changes behind a name that stands alone it gets braces, and beside an empty
  // inline comment behind a body that comment goes.
  bool around_changes = false;
};

// What brings `file`, which is sound, to the tree of `root`.
TreeEdits EditsFor(const FileText& file, const RootSection& root, const Remedies& remedies);

// The sections of the tree whose inline comment `file` doesn't have, by their names.
std::vector<const RealSection*> WithoutInlineComment(const FileText& file, const RootSection& root);

// What differs between a file and a tree; no reason if nothing does.
Obstacle FirstDifference(const FileText& file, const RootSection& root);

// Whether both are the same to the last comment.
bool SameTree(const RootSection& a, const RootSection& b);

// Whether `comment` is the one that `file` has for a section, or for its root: all of it, or
// without lines that a blank line sets apart from those behind them. These are the file's own: they
// stay when a section goes, and then stand above the next one.
bool SameComment(const FileText& file, std::int32_t number, std::string_view comment);

}  // namespace confgrove

#endif
