// The process-wide settings, and how a configuration's name becomes a path.
#ifndef CONFGROVE_FRONT_SETTINGS_H
#define CONFGROVE_FRONT_SETTINGS_H

#include <string>

namespace confgrove {

// Both live in functions, so that a host's static objects can use the library before main.

// Stands in front of every file name. Empty, or ends in a separator. Written by SetRootDirectory.
std::string& RootDirectory();

// Begins with a point. Written by SetDefaultExtension.
std::string& DefaultExtension();

void SetRootDirectory(std::string directory);
void SetDefaultExtension(std::string extension);

// `name`, with the default extension behind it unless that occurs anywhere in it.
std::string ComposeFileName(const std::string& name);

// The root directory and `file_name`.
std::string ComposeFullPath(const std::string& file_name);

}  // namespace confgrove

#endif
