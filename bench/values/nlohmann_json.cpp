// The ten tasks with nlohmann::json.
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tasks.h"

using nlohmann::json;

const char* const Extension = ".json";

// Task 1
int DefaultValue(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.value("workers", 4);
}

// Task 2
std::string RequiredValue(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.at("name");
}

// Task 3
int RangeChecked(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  const int port = config.value("port", 80);
  if (port < 1 || port > 65535) throw std::runtime_error("port: not from 1 to 65535");
  return port;
}

// Task 4
NLOHMANN_JSON_SERIALIZE_ENUM(Mode, {{Mode::Fast, "fast"}, {Mode::Safe, "safe"}})

Mode Enumeration(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.value("mode", Mode::Fast);  // Fast too for a name that isn't in the table
}

// Task 5
std::vector<double> Array(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.at("levels");
}

// Task 6
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(Limits, requests, timeout)

Limits NestedStruct(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.value("limits", Limits());
}

// Task 7
void from_json(const json& value, Upstream& upstream) {
  value.at("host").get_to(upstream.host);
  upstream.port = value.value("port", upstream.port);
}

std::map<std::string, Upstream> TableOfStructs(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  return config.at("upstreams");
}

// Task 8
std::vector<std::string> AllFaults(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  std::vector<std::string> told;  // without lines: it doesn't keep them
  const auto check = [&told](const json& value, const char* name, bool sound, const char* text) {
    if (value.contains(name) && !sound) told.push_back(std::string(name) + ": " + text);
  };
  const json port = config.value("port", json());
  check(config, "port", port.is_number_integer() && port >= 1 && port <= 65535,
        "not from 1 to 65535");
  const json mode = config.value("mode", json());
  check(config, "mode", mode == "fast" || mode == "safe", "no such mode");
  const json levels = config.value("levels", json());
  check(config, "levels", levels.is_array(), "no array");
  for (const json& level : levels) {
    if (levels.is_array() && !level.is_number()) told.push_back("levels: no number");
  }
  const json limits = config.value("limits", json::object());
  check(limits, "requests", limits.value("requests", json()).is_number_integer(), "not whole");
  check(limits, "timeout", limits.value("timeout", json()).is_number(), "no number");
  const json upstreams = config.value("upstreams", json::object());
  for (const auto& [name, upstream] : upstreams.items()) {
    if (!upstream.value("host", json()).is_string()) told.push_back(name + ": no host");
    check(upstream, "port", upstream.value("port", json()).is_number_integer(), "no whole number");
  }
  return told;
}

// Task 9
std::vector<std::string> UnknownSettings(const std::string& file) {
  const json config = json::parse(std::ifstream(file));
  std::vector<std::string> told;
  const auto look = [&told](const json& object, const std::vector<std::string>& known) {
    for (const auto& [name, value] : object.items()) {
      bool found = false;
      for (const std::string& one : known) found = found || one == name;
      if (!found) told.push_back(name);
    }
  };
  look(config, {"name", "port", "mode", "levels", "limits", "upstreams", "workers"});
  look(config.value("limits", json::object()), {"requests", "timeout"});
  return told;
}

// Task 10
void WriteBack(const std::string& file) {
  auto config = nlohmann::ordered_json::parse(std::ifstream(file));
  config["limits"]["requests"] = 240;
  std::ofstream(file) << config.dump(2) << '\n';  // in order, in its own layout
}
