// Change: what a call changes in a file. It is made in the tree of the file and saved in place, all
// or nothing.
#ifndef CONFGROVE_TOOLS_CHANGE_H
#define CONFGROVE_TOOLS_CHANGE_H

#include <confgrove/inspect.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command_line.h"
#include "file_name.h"

namespace confgrove::Tool {

class Change {
 public:
  explicit Change(FileName file_name);

  // The section at a path in the file itself. Null if there is none, be it imported or not.
  Section* Own(const std::string& path) const;

  // The same, refused if there is none.
  Section* RequireOwn(const std::string& path) const;

  // The links of the file. Good until a section is removed or given a value: ForgetLinks is to be
  // called then.
  const std::vector<Section*>& Links();
  void ForgetLinks() { links_.reset(); }

  // What is changed.
  FileName name;
  std::unique_ptr<Config> config;

  // What has come of it so far.
  std::vector<std::string> notes;  // to be told when all is done, each without the file
  std::size_t new_sections = 0;    // that were noted
  std::set<std::string> removed;   // sections, by path
  std::set<std::string> thinned;   // blocks that sections were removed from, by path

 private:
  std::optional<std::vector<Section*>> links_;
};

struct ChangeOptions {
  bool diff = false;          // show, and write nothing
  bool remove_links = false;  // that lead to a removed section
};

void AddDiff(Command* command, ChangeOptions* options);
void AddExisting(Command* command, bool* existing_only);
void AddLinks(Command* command, ChangeOptions* options);

// Opens `file`, has it changed, and saves it. If another program has changed it in between, all is
// done anew.
int ChangeFile(const std::string& file, const ChangeOptions& options,
               const std::function<void(Change*)>& make);

// A path of the shell that a file can hold, in the bytes of the file. Refuses another.
std::string PathToChange(const std::string& argument);

// The same for the name of a section.
std::string NameToGive(const std::string& argument);

// 'path', for a message.
std::string Quoted(const std::string& path);

// Whether one path is another, `outer`, or a path below it.
bool IsAtOrBelow(const std::string& inner, const std::string& outer);

}  // namespace confgrove::Tool

#endif
