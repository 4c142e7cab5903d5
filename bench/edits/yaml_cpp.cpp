#include <yaml-cpp/yaml.h>

#include <fstream>

#include "edit.h"

namespace edits {

void Make(Change change, const std::string& file) {
  YAML::Node root = YAML::LoadFile(file);
  switch (change) {
    case Change::Set: root["server"]["port"] = 9090; break;
    case Change::Add: root["server"]["backlog"] = 16; break;
    case Change::Remove: root["limits"].remove("legacy"); break;
  }
  std::ofstream(file) << root << '\n';
}

}  // namespace edits
