// RootSection: the top of one file's tree.
#ifndef CONFGROVE_TREE_ROOT_SECTION_H
#define CONFGROVE_TREE_ROOT_SECTION_H

#include <confgrove/config.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/settings.h"
#include "platform/platform.h"
#include "tree/real_section.h"

namespace confgrove {

class RootSection;

// Tells whether a root that was there at first is still there. For work that a trace handler
// interrupts: the handler may destroy the root.
class RootWatch {
 public:
  explicit RootWatch(const RootSection* root) : root_(root), outer_(innermost_) {
    innermost_ = this;
  }
  RootWatch(const RootWatch&) = delete;
  RootWatch& operator=(const RootWatch&) = delete;
  ~RootWatch() { innermost_ = outer_; }

  bool gone() const { return root_ == nullptr; }

  // `root` goes now.
  static void Report(const RootSection* root) {
    for (RootWatch* watch = innermost_; watch != nullptr; watch = watch->outer_) {
      if (watch->root_ == root) watch->root_ = nullptr;
    }
  }

 private:
  const RootSection* root_;
  RootWatch* outer_;  // begun before this one, and ends after it

  static inline RootWatch* innermost_ = nullptr;
};

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

  // Its file: where it was when this root was made, or by the settings of this moment if the root
  // has another name now.
  FileOrigin File() const;

  // Puts `imported` into `imports` under its name, where no living root may stand.
  void Attach(RootSection* imported);

  const FileOrigin origin;

  // What the system said of the file when the tree was last the same as it.
  Platform::FileStamp stamp;

  Pool pool;  // all memory of the tree below this root

  RootSection* parent_config = nullptr;  // the root that imports this one; not owned

  // By name, owned. Null stands for a configuration that has gone before this one: nothing is
  // looked for there, but its $import line is still saved.
  std::map<std::string, RootSection*, std::less<>> imports;

  // What was loaded or imported to make this configuration, by name: Import refuses to do it again.
  std::vector<std::string> files;

 protected:
  bool Rename(std::string_view new_name) override;

 private:
  RealSection* FindInImports(const std::string& path, const RootWatch& watch);
};

}  // namespace confgrove

#endif
