// Opening a configuration.
#include "open_file.h"

#include <confgrove/open_file.h>

#include "messages.h"
#include "refusal.h"
#include "render.h"
#include "standard_input.h"

namespace confgrove::Tool {

std::unique_ptr<Config> LoadConfig(const FileName& file) {
  RequireReadable(file.Path(), file.shown);
  ForgetMessages();
  std::unique_ptr<Config> config(OpenFile(file.path));
  if (config != nullptr) return config;
  ShowErrors(file.shown);
  throw Refusal("");
}

std::unique_ptr<Config> LoadInput(const std::string& file) {
  FileName name(PathOfInput(file));
  name.shown = file;
  return LoadConfig(name);
}

}  // namespace confgrove::Tool
