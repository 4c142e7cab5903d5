// OpenFile: the settings made for one file, and put back.
#include <confgrove/open_file.h>

#include "base/settings.h"
#include "base/silence.h"

namespace confgrove {

Config* OpenFile(const std::string& path, ConfCreateFlag flag) {
  const FileOrigin origin = FileOrigin::OfPath(path);
  if (origin.name.empty()) return nullptr;
  const Silence silence;
  const SettingsOf settings(origin);
  return ConfCreate(origin.name.c_str(), flag);
}

}  // namespace confgrove
