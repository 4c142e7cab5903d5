// Reads two settings, and says what is wrong with them, where.
#include <confgrove/values.h>

#include <cstdio>

int main(int argc, char** argv) {
  const auto config = confgrove::Open(argc == 2 ? argv[1] : "taste.cfg");
  if (!config) return 1;
  confgrove::Reader reader(*config);
  const int port = reader.Get("port", 80, confgrove::InRange(1, 65535));
  const auto log = reader.Get<std::string>("log.file", "taste.log");
  std::printf("port %d, log to %s\n", port, log.c_str());
  std::fputs(confgrove::ToText(reader.Faults()).c_str(), stderr);
  return confgrove::HasErrors(reader.Faults()) ? 1 : 0;
}
