// RootSection: the top of one file's tree.
#ifndef CONFGROVE_TREE_ROOT_SECTION_H
#define CONFGROVE_TREE_ROOT_SECTION_H

#include <confgrove/config.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tree/real_section.h"

namespace confgrove {

// A configuration: the tree of a file, and the roots of the files that it imports, which it owns.
class RootSection : public RealSection, public Config {
 public:
  RootSection(const std::string& file_name, bool is_read_only);
  ~RootSection() override;

  bool Save() override;
  bool Import(Config* config) override;
  const char* GetFileName() override;
  const char* GetFileTime() override;
  bool RemoveSection(const char* path) override;
  RealSection* FindSection(std::string_view path) override;

  // Puts `imported` into `imports` under its name, where no living root may stand.
  void Attach(RootSection* imported);

  Pool pool;  // all memory of the tree below this root

  RootSection* parent_config = nullptr;  // the root that imports this one; not owned

  // By name, owned. A root that was destroyed by itself leaves its key with null behind: lookups
  // pass over it, and Save still writes its line.
  std::map<std::string, RootSection*, std::less<>> imports;

  // The names of the files that make up this configuration; Import tests against them.
  std::vector<std::string> files;

 protected:
  bool Rename(std::string_view new_name) override;
};

}  // namespace confgrove

#endif
