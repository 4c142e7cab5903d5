// OpenFile: a configuration by the path of its file.
#ifndef CONFGROVE_OPEN_FILE_H
#define CONFGROVE_OPEN_FILE_H

#include <confgrove/config.h>
#include <confgrove/export.h>

#include <string>

namespace confgrove {

// Opens the file `path`, a path of the system, as ConfCreate does by `flag`. What it imports stands
// in its directory and has its extension. Sends no message and leaves the settings of the process
// as they are, so Save, which goes by them, writes elsewhere: use SaveInPlace. The caller owns the
// result. No program can open a file without extension whose name ends in a blank.
CONFGROVE_API Config* OpenFile(const std::string& path, ConfCreateFlag flag = ConfCreateOpen);

}  // namespace confgrove

#endif
