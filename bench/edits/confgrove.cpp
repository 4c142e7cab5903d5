#include <confgrove/confgrove.h>
#include <confgrove/save_in_place.h>

#include <memory>
#include <stdexcept>

#include "edit.h"

namespace edits {

void Make(Change change, const std::string& file) {
  const std::unique_ptr<Config> config(ConfCreate(file.c_str(), ConfCreateOpen, ConfNameFullPath));
  if (config == nullptr) throw std::runtime_error("can't be read");
  switch (change) {
    case Change::Set: config->SetInt(9090, "server.port"); break;
    case Change::Add: config->SetInt(16, "server.backlog"); break;
    case Change::Remove: config->RemoveSection("limits.legacy"); break;
  }
  const confgrove::SaveResult result = confgrove::SaveInPlace(config.get());
  if (!result) throw std::runtime_error(result.reason);
}

}  // namespace edits
