#include <toml++/toml.h>

#include <fstream>

#include "edit.h"

namespace edits {

void Make(Change change, const std::string& file) {
  toml::table root = toml::parse_file(file);
  switch (change) {
    case Change::Set: root["server"].as_table()->insert_or_assign("port", 9090); break;
    case Change::Add: root["server"].as_table()->insert_or_assign("backlog", 16); break;
    case Change::Remove: root["limits"].as_table()->erase("legacy"); break;
  }
  std::ofstream(file) << root << '\n';
}

}  // namespace edits
