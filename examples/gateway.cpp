// A small service that describes its settings once: to be read, checked, documented and written.
//
// Usage: gateway FILE, or gateway --sample, or gateway --reference.
#include <confgrove/values.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

enum class Mode { Fast, Safe };
constexpr confgrove::Named<Mode> ModeNames[] = {{"fast", Mode::Fast}, {"safe", Mode::Safe}};
constexpr auto& NamesOf(Mode /*unused*/) { return ModeNames; }

struct Upstream {
  std::string host;
  int port = 80;
  double weight = 1;
};
template <typename Fields>
void Describe(Fields& fields, Upstream& u) {
  fields("host", u.host, confgrove::Required(), confgrove::NotEmpty(), "Name or address.");
  fields("port", u.port, confgrove::InRange(1, 65535), "TCP port.");
  fields("weight", u.weight, confgrove::AtLeast(0), "Share of the requests.");
}

struct Limits {
  int requests = 120;
  std::chrono::seconds timeout{30};
  std::vector<double> backoff{0.5, 1, 2};
};
template <typename Fields>
void Describe(Fields& fields, Limits& l) {
  fields("requests", l.requests, confgrove::AtLeast(1), confgrove::WasNamed("rate"), "A minute.");
  fields("timeout", l.timeout, confgrove::InRange(1, 600), "For one answer.");
  fields("backoff", l.backoff, confgrove::Length(1, 5), confgrove::AtLeast(0), "Seconds to wait.");
}

struct Gateway {
  int port = 8080;
  Mode mode = Mode::Safe;
  std::array<int, 3> colour{40, 90, 160};
  Limits limits;
  std::map<std::string, Upstream> upstreams;
};
template <typename Fields>
void Describe(Fields& fields, Gateway& g) {
  fields("port", g.port, confgrove::InRange(1, 65535), "Where to listen.");
  fields("mode", g.mode, "What to do when an upstream is slow.");
  fields("colour", g.colour, confgrove::InRange(0, 255), "Of the status page.");
  fields("limits", g.limits, "What one client may ask for.");
  fields("upstreams", g.upstreams, confgrove::Required(), confgrove::NotEmpty(), "Who answers.");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string_view argument = argv[1];
  if (argument == "--sample" || argument == "--reference") {
    const bool sample = argument == "--sample";
    std::fputs((sample ? confgrove::Sample<Gateway>() : confgrove::Reference<Gateway>()).c_str(),
               stdout);
    return 0;
  }

  const confgrove::Opened config = confgrove::Open(argv[1]);
  for (const confgrove::Problem& problem : config.problems) {
    std::fprintf(stderr, "%s:%d: %s\n", problem.place.file.c_str(), problem.place.line,
                 problem.text.c_str());
  }
  if (!config) return 1;

  Gateway gateway;
  const std::vector<confgrove::Fault> faults = confgrove::Read(*config, gateway);
  for (const confgrove::Fault& fault : faults) {
    std::fputs(confgrove::ToText({fault}).c_str(), stderr);
    std::fputs(confgrove::Excerpt(fault.place).c_str(), stderr);
  }
  if (confgrove::HasErrors(faults)) return 1;

  std::printf("port %d, %s, %d requests a minute\n", gateway.port,
              gateway.mode == Mode::Fast ? "fast" : "safe", gateway.limits.requests);
  for (const auto& [name, upstream] : gateway.upstreams) {
    std::printf("%s: %s:%d, weight %g\n", name.c_str(), upstream.host.c_str(), upstream.port,
                upstream.weight);
  }

  // What differs from the file goes back to it; the rest of it stays byte for byte.
  gateway.limits.requests = 240;
  if (confgrove::HasErrors(confgrove::Write(*config, gateway))) return 1;
  return confgrove::SaveInPlace(config.get()) ? 0 : 1;
}
