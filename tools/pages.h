// The pages that `confgrove explain` prints.
#ifndef CONFGROVE_TOOLS_PAGES_H
#define CONFGROVE_TOOLS_PAGES_H

#include <string_view>

namespace confgrove::Tool {

// A page for each code begins with "### " and the code, on a line.
extern const std::string_view MessagesChapter;

}  // namespace confgrove::Tool

#endif
