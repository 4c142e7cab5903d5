#include <fstream>
#include <nlohmann/json.hpp>

#include "edit.h"

namespace edits {

// The class that keeps the order of the names, and comments allowed.
void Make(Change change, const std::string& file) {
  std::ifstream in(file);
  auto root = nlohmann::ordered_json::parse(in, nullptr, true, true);
  switch (change) {
    case Change::Set: root["server"]["port"] = 9090; break;
    case Change::Add: root["server"]["backlog"] = 16; break;
    case Change::Remove: root["limits"].erase("legacy"); break;
  }
  std::ofstream(file) << root.dump(1, '\t') << '\n';
}

}  // namespace edits
