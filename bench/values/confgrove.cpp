// The ten tasks with <confgrove/values.h>.
#include <confgrove/values.h>

#include "tasks.h"

const char* const Extension = ".cfg";

// Task 1
int DefaultValue(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Get("workers", 4);
}

// Task 2
std::string RequiredValue(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Require<std::string>("name");
}

// Task 3
int RangeChecked(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Get("port", 80, confgrove::InRange(1, 65535));
}

// Task 4
constexpr confgrove::Named<Mode> ModeNames[] = {{"fast", Mode::Fast}, {"safe", Mode::Safe}};
constexpr auto& NamesOf(Mode) { return ModeNames; }

Mode Enumeration(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Get("mode", Mode::Fast);
}

// Task 5
std::vector<double> Array(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Require<std::vector<double>>("levels");
}

// Task 6
template <typename Fields>
void Describe(Fields& fields, Limits& limits) {
  fields("requests", limits.requests);
  fields("timeout", limits.timeout);
}

Limits NestedStruct(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Get("limits", Limits());
}

// Task 7
template <typename Fields>
void Describe(Fields& fields, Upstream& upstream) {
  fields("host", upstream.host, confgrove::Required());
  fields("port", upstream.port, confgrove::InRange(1, 65535));
}

std::map<std::string, Upstream> TableOfStructs(const std::string& file) {
  const auto config = confgrove::Open(file);
  return confgrove::Reader(*config).Require<std::map<std::string, Upstream>>("upstreams");
}

// Task 8
struct Gateway {
  std::string name;
  int port = 80;
  Mode mode = Mode::Fast;
  std::vector<double> levels;
  Limits limits;
  std::map<std::string, Upstream> upstreams;
};
template <typename Fields>
void Describe(Fields& fields, Gateway& gateway) {
  fields("name", gateway.name, confgrove::Required());
  fields("port", gateway.port, confgrove::InRange(1, 65535));
  fields("mode", gateway.mode);
  fields("levels", gateway.levels);
  fields("limits", gateway.limits);
  fields("upstreams", gateway.upstreams);
}

std::vector<std::string> AllFaults(const std::string& file) {
  const auto config = confgrove::Open(file);
  confgrove::Reader reader(*config);
  Gateway gateway;
  reader.Read(gateway);
  std::vector<std::string> told;
  for (const auto& fault : reader.Faults()) {
    told.push_back(std::to_string(fault.place.line) + ": " + confgrove::Message(fault));
  }
  return told;
}

// Task 9
std::vector<std::string> UnknownSettings(const std::string& file) {
  const auto config = confgrove::Open(file);
  confgrove::Reader reader(*config);
  Gateway gateway;
  reader.Read(gateway);
  std::vector<std::string> told;
  for (const auto& fault : reader.Unread()) {
    told.push_back(std::to_string(fault.place.line) + ": " + confgrove::Message(fault));
  }
  return told;
}

// Task 10
void WriteBack(const std::string& file) {
  const auto config = confgrove::Open(file);
  if (!confgrove::Set(*config, "limits.requests", 240)) return;
  if (!confgrove::SaveInPlace(config.get())) std::abort();
}
