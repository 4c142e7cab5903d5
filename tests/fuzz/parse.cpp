// Any bytes as a configuration file, which can import some others.
#include <memory>

#include "harness.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FreshFiles();
  WriteFile("m.cfg", std::string(data, data + size));
  const std::unique_ptr<Config> config(ConfCreate("m", ConfCreateOpen));
  if (config == nullptr) return 0;
  auto* root = dynamic_cast<confgrove::RootSection*>(config.get());
  Sections seen;
  Require(IsSound(*root, &seen), "a sound tree");
  SaveAndLoad(root);
  return 0;
}
