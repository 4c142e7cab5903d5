// SPDX-License-Identifier: MIT
// Io: where messages go, and helpers for directories and command lines.
#ifndef CONFGROVE_IO_H
#define CONFGROVE_IO_H

#include <confgrove/export.h>

#include <cstdint>

// Receives the library's messages. `level` says what it is: 1 an error or refusal, 2 a warning or
// progress, 3 a summary, 7 a failed lookup. `format` and what follows are those of printf; the
// texts are good during the call only.
using TraceFunction = void(std::int32_t level, const char* format, ...);

namespace Io {

// All messages go to `handler` from now on; at start they go to the standard error stream, a line
// each. Null changes nothing. The handler must not throw.
CONFGROVE_API void SetTraceHandler(TraceFunction* handler);

// Puts a backslash behind a directory name that doesn't end in one, in its own buffer, which then
// takes strlen(path) + 2 bytes. Returns `path`, which must not be null.
CONFGROVE_API char* Dir(char* path);

// Makes the directory `path`, the ones above it first; the backslash alone divides them. True if
// the system has made it or has nothing against it. Else false, with one message, and the
// directories made by then are kept. `path` must not be null.
CONFGROVE_API bool CreateDirectoryRecursive(const char* path);

// Removes nothing and returns true. `path` isn't looked at.
CONFGROVE_API bool DeleteDirectoryRecursive(const char* path);

// Looks for the word `option` in the command line `line`, behind its first word, and copies the
// word behind it, or the text between quotes, to `out`, which has room for `size` bytes with the
// NUL; what doesn't fit is cut. With a null `out` or a `size` below 1 nothing is stored. True if
// the option is there, with or without a value; false otherwise, `out` untouched. A null `line` or
// `option` gives false.
CONFGROVE_API bool GetCommandLineOption(const char* line, const char* option, char* out,
                                        std::int32_t size);

}  // namespace Io

#endif
