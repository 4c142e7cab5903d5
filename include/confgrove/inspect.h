// SPDX-License-Identifier: MIT
// What the interface of a section doesn't tell: look-ups without a trace, own kinds, places in
// files.
#ifndef CONFGROVE_INSPECT_H
#define CONFGROVE_INSPECT_H

#include <confgrove/config.h>
#include <confgrove/export.h>
#include <confgrove/section.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace confgrove {

// None of these sends a message or leaves a mark in a tree. Pointers to sections and texts are
// never null; what comes back lives as long as what Section's own operations give.

// The section at `path` as GetSection finds it: from a root through its imports too, links not
// followed. Null if there is none, or if `path` is no path.
CONFGROVE_API Section* FindSection(Section* from, const char* path);

// The kind of the section's own value: Link for a link.
CONFGROVE_API SectionType OwnType(Section* section);

// Where a link leads, a path from the top; null if the section is no link.
CONFGROVE_API const char* LinkTarget(Section* section);

// A section's own value, where it lies in the tree: good until it is changed.
struct ValueView {
  SectionType type = SectionType::None;
  std::int32_t count = 0;           // of numbers
  const double* numbers = nullptr;  // null if it holds none
  const char* text = nullptr;       // of a text, or of a link: where it leads; else null
};

// The section as FindSection finds it, and its value in `*value`, which is untouched if there is no
// such section.
CONFGROVE_API Section* FindValue(Section* from, const char* path, ValueView* value);

// The section's path from its top, names joined by dots; "" for a top.
CONFGROVE_API std::string PathOf(Section* section);

// The configuration that the section belongs to: what its GetTop gives.
CONFGROVE_API Config* ConfigOf(Section* section);

// The configurations that this one imports itself, in the order in which look-ups ask them. The
// name of each, GetName(""), is the one in its $import line.
CONFGROVE_API std::vector<Config*> Imports(Config* config);

// The file that a configuration was read from or will be saved to in place: as it was when the
// configuration was opened, whatever the settings are now, or what GetFileName gives if its root
// has been renamed since.
CONFGROVE_API std::string OwnFile(Config* config);

// A place in a file. Of a section it is that of its name.
struct Place {
  std::string file{};       // its path; "" if there is no such section
  std::size_t offset = 0;   // of the first byte, from 0, as the file is on the disk
  std::size_t length = 0;   // in bytes
  std::int32_t line = 0;    // from 1, as messages count lines; 0: the section isn't in the file
  std::int32_t column = 0;  // from 1, in characters
};

// Where the section stands, or the one that a look-up of `path` finds, links not followed. The file
// is read anew for each call: this takes as long as a load. A section that was made or renamed
// since the file was written, or whose file is gone or faulty, has its file alone.
CONFGROVE_API Place Where(Section* section);
CONFGROVE_API Place Where(Section* from, const char* path);

// The same for many sections at once, in their order; each file is read once.
CONFGROVE_API std::vector<Place> Where(const std::vector<Section*>& sections);

}  // namespace confgrove

#endif
