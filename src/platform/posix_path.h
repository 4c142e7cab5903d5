// Paths of the library, for POSIX systems.
#ifndef CONFGROVE_PLATFORM_POSIX_PATH_H
#define CONFGROVE_PLATFORM_POSIX_PATH_H

#include <algorithm>
#include <string>

namespace confgrove::Platform {

// Files written on Windows name others with backslashes.
inline std::string ForSystem(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

}  // namespace confgrove::Platform

#endif
