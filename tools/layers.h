// LayeredSection: a configuration and all that it imports as the one tree that look-ups make of it.
#ifndef CONFGROVE_TOOLS_LAYERS_H
#define CONFGROVE_TOOLS_LAYERS_H

#include <confgrove/inspect.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace confgrove::Tool {

struct LayeredSection {
  // The one below this at `path`, names joined by dots; null if there is none.
  const LayeredSection* Find(const std::string& path) const;

  Section* section = nullptr;  // that a look-up of the path finds: it hides those of other files
  const LayeredSection* parent = nullptr;  // null for the top
  std::int32_t depth = 0;                  // 0 for the top

  // Those of the first file, and behind them what each further file adds.
  std::vector<std::unique_ptr<LayeredSection>> children;
  std::unordered_map<std::string, LayeredSection*> by_name;
};

// All paths of `config`, which outlives the result. A section that no path finds, for there is a
// NUL in its name, is refused; `shown` is the file, for the message.
std::unique_ptr<LayeredSection> Layered(Config* config, const std::string& shown);

// As KindOf for a section of one file.
const char* KindOf(const LayeredSection& setting);

}  // namespace confgrove::Tool

#endif
