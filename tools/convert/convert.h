// `confgrove convert`: the settings of a file of another format, in ours.
#ifndef CONFGROVE_TOOLS_CONVERT_CONVERT_H
#define CONFGROVE_TOOLS_CONVERT_CONVERT_H

#include <string>
#include <vector>

namespace confgrove::Tool {

struct ConvertRequest {
  std::string file;     // a path of the system
  std::string from;     // one of ConvertFormats()
  bool rename = false;  // whether what a name can't hold becomes '_', instead of being refused
};

// What can be asked for; whether each can be read depends on what the tool was built with.
std::vector<std::string> ConvertFormats();

// Prints the converted file on standard output and gives 0; or prints nothing but, on standard
// error, each setting that can't be carried over, and gives 1.
int Convert(const ConvertRequest& request);

}  // namespace confgrove::Tool

#endif
