// The ten tasks with toml11.
#include <fstream>
#include <stdexcept>
#include <toml.hpp>

#include "tasks.h"

const char* const Extension = ".toml";

// Task 1
int DefaultValue(const std::string& file) {
  const auto config = toml::parse(file);
  return toml::find_or(config, "workers", 4);  // 4 too if it is a text
}

// Task 2
std::string RequiredValue(const std::string& file) {
  const auto config = toml::parse(file);
  return toml::find<std::string>(config, "name");
}

// Task 3
int RangeChecked(const std::string& file) {
  const auto config = toml::parse(file);
  const int port = toml::find_or(config, "port", 80);
  if (port < 1 || port > 65535) {
    throw std::runtime_error(toml::format_error("not from 1 to 65535", config.at("port"), "here"));
  }
  return port;
}

// Task 4
Mode Enumeration(const std::string& file) {
  const auto config = toml::parse(file);
  const std::string mode = toml::find_or(config, "mode", std::string("fast"));
  if (mode != "fast" && mode != "safe") {
    throw std::runtime_error(toml::format_error("no such mode", config.at("mode"), "here"));
  }
  return mode == "fast" ? Mode::Fast : Mode::Safe;
}

// Task 5
std::vector<double> Array(const std::string& file) {
  const auto config = toml::parse(file);
  return toml::find<std::vector<double>>(config, "levels");
}

// Task 6
Limits NestedStruct(const std::string& file) {
  const auto config = toml::parse(file);
  const auto& table = toml::find(config, "limits");
  Limits limits;
  limits.requests = toml::find_or(table, "requests", limits.requests);
  limits.timeout = toml::find_or(table, "timeout", limits.timeout);
  return limits;
}

// Task 7
std::map<std::string, Upstream> TableOfStructs(const std::string& file) {
  const auto config = toml::parse(file);
  std::map<std::string, Upstream> upstreams;
  for (const auto& [name, value] : toml::find<toml::table>(config, "upstreams")) {
    Upstream& upstream = upstreams[name];
    upstream.host = toml::find<std::string>(value, "host");
    upstream.port = toml::find_or(value, "port", upstream.port);
  }
  return upstreams;
}

// Task 8
std::vector<std::string> AllFaults(const std::string& file) {
  const auto config = toml::parse(file);
  std::vector<std::string> told;
  const auto tell = [&told](const toml::value& value, const std::string& text) {
    told.push_back(std::to_string(value.location().line()) + ": " + text);
  };
  if (config.contains("port")) {
    const auto& port = config.at("port");
    const bool sound = port.is_integer() && port.as_integer() >= 1 && port.as_integer() <= 65535;
    if (!sound) tell(port, "port: not from 1 to 65535");
  }
  if (config.contains("mode")) {
    const auto& mode = config.at("mode");
    const std::string text = mode.is_string() ? std::string(mode.as_string()) : "";
    if (text != "fast" && text != "safe") tell(mode, "mode: no such mode");
  }
  if (config.contains("levels")) {
    const auto& levels = config.at("levels");
    if (!levels.is_array()) tell(levels, "levels: no array");
    if (levels.is_array()) {
      for (const auto& level : levels.as_array()) {
        if (!level.is_floating() && !level.is_integer()) tell(level, "levels: no number");
      }
    }
  }
  if (config.contains("limits")) {
    const auto& limits = config.at("limits");
    if (limits.contains("requests") && !limits.at("requests").is_integer()) {
      tell(limits.at("requests"), "requests: not whole");
    }
    if (limits.contains("timeout") && !limits.at("timeout").is_floating()) {
      tell(limits.at("timeout"), "timeout: no number");
    }
  }
  if (config.contains("upstreams")) {
    for (const auto& [name, upstream] : config.at("upstreams").as_table()) {
      if (!upstream.contains("host") || !upstream.at("host").is_string()) {
        tell(upstream, "host: missing, or no text");
      }
      if (upstream.contains("port") && !upstream.at("port").is_integer()) {
        tell(upstream.at("port"), "port: no whole number");
      }
    }
  }
  return told;
}

// Task 9
std::vector<std::string> UnknownSettings(const std::string& file) {
  const auto config = toml::parse(file);
  std::vector<std::string> told;
  const auto look = [&told](const toml::value& table, const std::vector<std::string>& known) {
    for (const auto& [name, value] : table.as_table()) {
      bool found = false;
      for (const std::string& one : known) found = found || one == name;
      if (!found) told.push_back(std::to_string(value.location().line()) + ": " + name);
    }
  };
  look(config, {"name", "port", "mode", "levels", "limits", "upstreams", "workers"});
  if (config.contains("limits")) look(config.at("limits"), {"requests", "timeout"});
  return told;
}

// Task 10
void WriteBack(const std::string& file) {
  auto config = toml::parse<toml::preserve_comments>(file);
  config["limits"]["requests"] = 240;
  std::ofstream(file) << config;  // with comments, in its own order and layout
}
