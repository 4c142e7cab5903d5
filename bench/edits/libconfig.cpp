#include <libconfig.h++>

#include "edit.h"

namespace edits {

void Make(Change change, const std::string& file) {
  libconfig::Config config;
  config.readFile(file.c_str());
  libconfig::Setting& server = config.lookup("server");
  switch (change) {
    case Change::Set: server["port"] = 9090; break;
    case Change::Add: server.add("backlog", libconfig::Setting::TypeInt) = 16; break;
    case Change::Remove: config.lookup("limits").remove("legacy"); break;
  }
  config.writeFile(file.c_str());
}

}  // namespace edits
