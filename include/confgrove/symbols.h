// SPDX-License-Identifier: MIT
// Symbols: cleaning and testing text.
#ifndef CONFGROVE_SYMBOLS_H
#define CONFGROVE_SYMBOLS_H

#include <confgrove/export.h>

#include <string>

namespace Symbols {

// Removes the blanks (0x20 alone) from both ends of `text`, in place, and returns it. A text of
// blanks alone stays as it is.
CONFGROVE_API std::string& clear_blanks(std::string& text);

// Removes the control characters (0x00 to 0x1F and 0x7F) from `text`, in place, and returns it.
CONFGROVE_API std::string& clear_ctrl(std::string& text);

// Whether `path` can be a path of sections: letters, digits, '_' and dots, no digit or dot first.
// The first fault is reported to the trace handler. `path` isn't changed.
CONFGROVE_API bool check_path(std::string& path);

}  // namespace Symbols

#endif
