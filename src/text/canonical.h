// The canonical layout, without the losses of a save.
#ifndef CONFGROVE_TEXT_CANONICAL_H
#define CONFGROVE_TEXT_CANONICAL_H

#include <string>

#include "text/file_text.h"
#include "tree/root_section.h"

namespace confgrove {

// What Save would write for a tree, but with all digits, blank sections as empty blocks, and lines
// that end in LF. It is what the first save of a process gives.
std::string CanonicalText(const RootSection& root);

// The same for a sound file, whose numbers keep their spelling, with all that a tree doesn't hold:
// - A block comment, a slash, or an inline comment that another has replaced, which becomes a block
//   comment: above the section on whose line or in front of which it stands; at the end of its
//   block if no section follows there; at the head of the file in front of an import.
// - A comment that no section keeps: at the end of its block, or of the file. In front of an import
//   that isn't the last one: at the head of the file.
// - What the end of the file cuts off: at the end.
std::string CanonicalText(const FileText& file);

}  // namespace confgrove

#endif
