// The ten tasks with toml++.
#include <toml++/toml.h>

#include <fstream>
#include <stdexcept>

#include "tasks.h"

const char* const Extension = ".toml";

// Task 1
int DefaultValue(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  return config["workers"].value_or(4);  // 4 too if it is a text
}

// Task 2
std::string RequiredValue(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  const auto name = config["name"].value<std::string>();
  if (!name) throw std::runtime_error("name: missing, or no text");
  return *name;
}

// Task 3
int RangeChecked(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  const int port = config["port"].value_or(80);
  if (port < 1 || port > 65535) throw std::runtime_error("port: not from 1 to 65535");
  return port;
}

// Task 4
Mode Enumeration(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  const std::string mode = config["mode"].value_or("fast");
  if (mode != "fast" && mode != "safe") throw std::runtime_error("mode: no such mode");
  return mode == "fast" ? Mode::Fast : Mode::Safe;
}

// Task 5
std::vector<double> Array(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  std::vector<double> levels;
  if (const toml::array* array = config["levels"].as_array()) {
    for (const toml::node& node : *array) levels.push_back(node.value_or(0.0));
  }
  return levels;
}

// Task 6
Limits NestedStruct(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  Limits limits;
  limits.requests = config["limits"]["requests"].value_or(limits.requests);
  limits.timeout = config["limits"]["timeout"].value_or(limits.timeout);
  return limits;
}

// Task 7
std::map<std::string, Upstream> TableOfStructs(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  std::map<std::string, Upstream> upstreams;
  const toml::table* table = config["upstreams"].as_table();
  if (table == nullptr) throw std::runtime_error("upstreams: missing, or no table");
  for (const auto& [name, node] : *table) {
    const toml::node_view<const toml::node> view(node);
    Upstream& upstream = upstreams[std::string(name.str())];
    const auto host = view["host"].value<std::string>();
    if (!host) throw std::runtime_error("host: missing, or no text");
    upstream.host = *host;
    upstream.port = view["port"].value_or(upstream.port);
  }
  return upstreams;
}

// Task 8
std::vector<std::string> AllFaults(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  std::vector<std::string> told;
  const auto tell = [&told](const toml::node& node, const std::string& text) {
    told.push_back(std::to_string(node.source().begin.line) + ": " + text);
  };
  if (const toml::node* port = config.get("port")) {
    const auto value = port->value_exact<std::int64_t>();
    if (!value || *value < 1 || *value > 65535) tell(*port, "port: not from 1 to 65535");
  }
  if (const toml::node* mode = config.get("mode")) {
    const auto value = mode->value_exact<std::string>();
    if (!value || (*value != "fast" && *value != "safe")) tell(*mode, "mode: no such mode");
  }
  if (const toml::node* levels = config.get("levels")) {
    const toml::array* array = levels->as_array();
    if (array == nullptr) tell(*levels, "levels: no array");
    for (std::size_t i = 0; array != nullptr && i < array->size(); ++i) {
      if (!(*array)[i].is_number()) tell((*array)[i], "levels: no number");
    }
  }
  if (const toml::table* limits = config["limits"].as_table()) {
    const toml::node* requests = limits->get("requests");
    if (requests != nullptr && !requests->is_integer()) tell(*requests, "requests: not whole");
    const toml::node* timeout = limits->get("timeout");
    if (timeout != nullptr && !timeout->is_number()) tell(*timeout, "timeout: no number");
  }
  if (const toml::table* upstreams = config["upstreams"].as_table()) {
    for (const auto& [name, node] : *upstreams) {
      const toml::table* upstream = node.as_table();
      if (upstream == nullptr) {
        tell(node, "upstreams: no table");
        continue;
      }
      const toml::node* host = upstream->get("host");
      if (host == nullptr || !host->is_string()) tell(node, "host: missing, or no text");
      const toml::node* port = upstream->get("port");
      if (port != nullptr && !port->is_integer()) tell(*port, "port: no whole number");
    }
  }
  return told;
}

// Task 9
std::vector<std::string> UnknownSettings(const std::string& file) {
  const toml::table config = toml::parse_file(file);
  std::vector<std::string> told;
  const auto look = [&told](const toml::table& table, const std::vector<std::string>& known) {
    for (const auto& [name, node] : table) {
      bool found = false;
      for (const std::string& one : known) found = found || one == name.str();
      if (found) continue;
      told.push_back(std::to_string(name.source().begin.line) + ": " + std::string(name.str()));
    }
  };
  look(config, {"name", "port", "mode", "levels", "limits", "upstreams", "workers"});
  if (const toml::table* limits = config["limits"].as_table())
    look(*limits, {"requests", "timeout"});
  return told;
}

// Task 10
void WriteBack(const std::string& file) {
  toml::table config = toml::parse_file(file);
  config["limits"].as_table()->insert_or_assign("requests", 240);
  std::ofstream(file) << config << '\n';  // without comments, in its own order
}
