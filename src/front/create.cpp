// ConfCreate: the way in.
#include <confgrove/config.h>

#include <cassert>
#include <memory>
#include <string>
#include <utility>

#include "front/load.h"
#include "front/settings.h"
#include "front/trace.h"
#include "tree/root_section.h"
#include "tree/text.h"

namespace confgrove {
namespace {

struct PathPieces {
  std::string directory;  // with the drive, up to and including the last separator
  std::string file_name;  // without the extension
  std::string extension;  // with its point; empty if there is none
};

// Both slashes divide, on every system; a letter and ':' at the start are a drive.
PathPieces SplitPath(const std::string& path) {
  std::size_t file_begin = path.find_last_of("/\\");
  if (file_begin != std::string::npos) {
    ++file_begin;
  } else {
    file_begin = path.size() > 1 && IsAsciiLetter(path[0]) && path[1] == ':' ? 2 : 0;
  }
  std::size_t extension_begin = path.rfind('.');
  if (extension_begin == std::string::npos || extension_begin < file_begin) {
    extension_begin = path.size();
  }
  return {path.substr(0, file_begin), path.substr(file_begin, extension_begin - file_begin),
          path.substr(extension_begin)};
}

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
    ResetLoadState();
    if (TraceLevel > 0)
      TraceHandler(LevelWarning, "Translating config file: %s", given_name.c_str());
    std::unique_ptr<RootSection> root = LoadFile(own_name, outcome.read_only, 1);
    faulty = ReportCounts() > 0;
    if (root != nullptr) {
      const auto& loaded = ImportStack().names();
      root->files.insert(root->files.begin(), loaded.begin(), loaded.end());
      return root.release();
    }
  }
  if (faulty ? !outcome.new_if_faulty : !outcome.new_if_missing) return nullptr;
  return new RootSection(own_name, false);
}
