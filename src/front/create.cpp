// ConfCreate: the way in.
#include <confgrove/config.h>

#include <cassert>
#include <memory>
#include <string>
#include <utility>

#include "base/letters.h"
#include "base/settings.h"
#include "base/trace.h"
#include "parser/load.h"
#include "tree/path.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

// What a file that was loaded, or could not be, comes to under one flag.
struct Outcome {
  bool loads, read_only, new_if_missing, new_if_faulty;
};

const Outcome Outcomes[] = {
    {false, false, true, true},   // ConfCreateNew
    {true, false, false, false},  // ConfCreateOpen
    {true, true, false, false},   // ConfCreateOpenReadOnly
    {true, false, true, false},   // ConfCreateOpenOrNew
    {true, false, true, true},    // ConfCreateOpenAlways
};

// Sends the summary, if there is a reason to.
void ReportCounts(const Load& load) {
  if (TraceLevel > 0 || load.errors > 0) {
    TraceHandler(LevelSummary, "%d error(s), %d warning(s)", load.errors, load.warnings);
  }
}

}  // namespace
}  // namespace confgrove

Config* ConfCreate(const char* name, ConfCreateFlag flag, ConfNameType name_type) {
  using namespace confgrove;
  assert(name != nullptr);
  const std::string given_name = name;  // which may be the text of a setting that changes below
  std::string own_name(WithoutBlanks(given_name));
  if (own_name.empty()) return nullptr;
  if (name_type == ConfNameFullPath) {
    PathPieces pieces = SplitPath(own_name);
    SetDefaultExtension(std::move(pieces.extension));
    SetRootDirectory(std::move(pieces.directory));
    own_name = std::move(pieces.file_name);
  }
  if (flag < ConfCreateNew || flag > ConfCreateOpenAlways) return nullptr;

  const Outcome& outcome = Outcomes[flag];
  bool faulty = false;
  if (outcome.loads) {
    Load load;
    if (TraceLevel > 0)
      TraceHandler(LevelWarning, "Translating config file: %s", given_name.c_str());
    std::unique_ptr<RootSection> root = LoadFile(&load, own_name, outcome.read_only, 1);
    ReportCounts(load);
    faulty = load.errors > 0;
    if (root != nullptr) {
      const auto& loaded = load.files.names();
      root->files.insert(root->files.begin(), loaded.begin(), loaded.end());
      return root.release();
    }
  }
  if (faulty ? !outcome.new_if_faulty : !outcome.new_if_missing) return nullptr;
  return new RootSection(own_name, false);
}
