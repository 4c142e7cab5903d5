// Has one library do the ten tasks: values_LIBRARY DIRECTORY, where sound and faulty files stand.
// Fails if one of the values is wrong; shows what is told about a faulty file, and what becomes of
// a file of which one value is written back.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tasks.h"

namespace {

void Expect(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::exit(1);
}

std::vector<std::string> LinesOf(const std::string& file) {
  std::ifstream stream(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

void Show(const char* title, const std::vector<std::string>& lines) {
  std::printf("%s\n", title);
  for (const std::string& line : lines) std::printf("  %s\n", line.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string sound = std::string(argv[1]) + "/sound" + Extension;
  const std::string faulty = std::string(argv[1]) + "/faulty" + Extension;

  Expect(DefaultValue(sound) == 4, "workers");
  Expect(RequiredValue(sound) == "gateway", "name");
  Expect(RangeChecked(sound) == 8443, "port");
  Expect(Enumeration(sound) == Mode::Safe, "mode");
  Expect(Array(sound) == std::vector<double>{55, 80, 105.5}, "levels");
  const Limits limits = NestedStruct(sound);
  Expect(limits.requests == 120 && limits.timeout <= 30 && limits.timeout >= 30, "limits");
  const std::map<std::string, Upstream> upstreams = TableOfStructs(sound);
  Expect(upstreams.size() == 2 && upstreams.at("main").port == 8080, "upstreams");
  Expect(upstreams.at("spare").host == "10.0.0.6" && upstreams.at("spare").port == 80, "spare");

  Show("faults of a faulty file:", AllFaults(faulty));
  Show("settings that it doesn't know:", UnknownSettings(faulty));

  const std::vector<std::string> before = LinesOf(sound);
  WriteBack(sound);
  const std::vector<std::string> after = LinesOf(sound);
  Expect(NestedStruct(sound).requests == 240, "the value that was written back");
  std::size_t kept = 0;
  for (const std::string& line : before) {
    for (const std::string& other : after) {
      if (line != other) continue;
      ++kept;
      break;
    }
  }
  std::printf("of %zu lines %zu are kept\n", before.size(), kept);
  return 0;
}
