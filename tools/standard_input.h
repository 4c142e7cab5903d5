// Standard input in place of a file.
#ifndef CONFGROVE_TOOLS_STANDARD_INPUT_H
#define CONFGROVE_TOOLS_STANDARD_INPUT_H

#include <string>

namespace confgrove::Tool {

// What the user calls standard input.
constexpr const char* StandardInput = "-";

// The path of `file` for commands that read. Standard input is copied to the working directory,
// where its imports are looked up; the copy goes when the process ends.
std::string PathOfInput(const std::string& file);

// What PathOfInput has made of `file`, and the way back. Neither reads anything.
std::string ToKnownInput(const std::string& file);
std::string FromKnownInput(const std::string& path);

}  // namespace confgrove::Tool

#endif
