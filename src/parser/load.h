// The load under way, and the door from the parser to the files that a file imports.
#ifndef CONFGROVE_PARSER_LOAD_H
#define CONFGROVE_PARSER_LOAD_H

#include <cstdint>
#include <deque>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "parser/record.h"

namespace confgrove {

class RootSection;

// File names in the order in which their reading began, with a quick test for one of them.
class FileNames {
 public:
  void Append(const std::string& name) { names_.push_back(name); }
  bool Contains(std::string_view name);
  const std::deque<std::string>& names() const { return names_; }

 private:
  std::deque<std::string> names_;     // which keeps its strings where `known_` points
  std::set<std::string_view> known_;  // the first of them: nobody asks in a load without imports
};

// A file of a load that records, in the order in which their reading began.
struct RecordedFile {
  std::string name;    // as it was asked for
  std::string path;    // of the system
  std::string label;   // as messages name it
  bool found = false;  // else nothing below is filled in
  std::string text;    // each CR LF as one LF
  Record record;
};

// One call of ConfCreate, or a like one, with all files that are read for it.
struct Load {
  // Imports included.
  std::int32_t errors = 0;
  std::int32_t warnings = 0;

  // All files begun so far, each name as it was asked for. A file stays when it is done or has
  // failed: no file may be asked for twice.
  FileNames files;

  // Whether each file is to be recorded, or only the first, and what was.
  bool records = false;
  bool records_first = false;
  std::list<RecordedFile> recorded;

  // Whether the parser goes on, recording, behind the place in a file where reading ends for good.
  // It carries out no import there.
  bool reads_on = false;
};

// Reads the file of the configuration `name` into a new root. `depth` is its place in the chain of
// imports, 1 for the file that the host opens. Null if it can't be opened or if the load has any
// error by then; each was reported.
std::unique_ptr<RootSection> LoadFile(Load* load, const std::string& name, bool read_only,
                                      std::int32_t depth);

// The same for `text`, which stands for what the file holds, each CR LF as one LF. If
// `records_first` is set, the caller has the text of the first file.
std::unique_ptr<RootSection> ParseFile(Load* load, const std::string& name, const std::string& text,
                                       bool read_only, std::int32_t depth);

}  // namespace confgrove

#endif
