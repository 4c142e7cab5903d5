// OpenFile: the settings made for one file, and put back.
#include <confgrove/open_file.h>

#include "base/settings.h"
#include "base/silence.h"

namespace confgrove {

Config* OpenFile(const std::string& path, ConfCreateFlag flag) {
  const FileOrigin origin = FileOrigin::OfPath(path);
  const std::string file = path.substr(origin.root_directory.size());
  if (file.empty()) return nullptr;
  const Silence silence;
  const SettingsOf settings(origin);
  // The plain name where it leads to the file, since imports are compared with it. In front of
  // another one "./" holds the point that keeps an extension away.
  const bool is_plain = !origin.name.empty() && ComposeFileName(origin.name) == file;
  return ConfCreate((is_plain ? origin.name : "./" + file).c_str(), flag);
}

}  // namespace confgrove
