// The whole life of a configuration: open, read, change, import, save, destroy.
//
// Usage: host DIRECTORY, which holds tidewatch.cfg and the files that it imports. What it changes
// goes to tidewatch-night.cfg and night.cfg beside them.
#include <confgrove/confgrove.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

// Errors and warnings go to standard error. Levels above 2 are summaries, and failed lookups: one
// of these comes with each value that is found in an imported file.
void PrintMessage(std::int32_t level, const char* format, ...) {
  if (level > 2) return;
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
  std::fputc('\n', stderr);
}

void Read(Config& config) {
  if (const char* title = config.GetString("title")) std::printf("title: %s\n", title);

  double smoothing = 1;  // keeps this value if the file has none
  config.GetDouble(&smoothing, "station.smoothing");
  std::printf("smoothing: %g\n", smoothing);

  // Links are followed, and a path that this file lacks is looked up in the imported ones.
  if (const char* gauge = config.GetString("station.primary")) std::printf("gauge: %s\n", gauge);

  std::vector<double> levels(
      static_cast<std::size_t>(config.GetDoubles(nullptr, 0, "warning.levels")));
  config.GetDoubles(levels.data(), static_cast<std::int32_t>(levels.size()), "warning.levels");
  for (double level : levels) std::printf("level: %g\n", level);

  // A Section is the way to work below one block; its paths begin there.
  Section* server = config.GetSection("server");
  for (std::int32_t i = 0; server != nullptr && i < server->GetSectionCount(""); ++i) {
    std::printf("server has %s\n", server->GetName("", i));
  }
}

bool Change(Config& config) {
  const double levels[] = {55, 80, 105, 135};
  return config.SetDoubles(levels, 4, "warning.levels") &&
         config.SetComment(" nearer, for the night", "warning.levels", true) &&
         config.SetInt(60, "station.night.interval") &&  // makes the block station.night
         config.SetLink("station.night.interval", "station.night.hold") &&
         config.SetName("night_siren", "warning.siren.night") && config.RemoveSection("archive");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: host DIRECTORY\n", stderr);
    return 2;
  }
  ConfSet(argv[1], ".cfg", 1, PrintMessage);

  std::unique_ptr<Config> config(ConfCreate("tidewatch", ConfCreateOpen));
  if (config == nullptr) {
    std::fputs("tidewatch.cfg is missing or has errors\n", stderr);
    return 1;
  }
  Read(*config);
  if (!Change(*config)) return 1;

  // A second configuration, which the first one then owns. Its values are found from now on
  // through `config`, and its file is named in a $import line of the saved one.
  std::unique_ptr<Config> night(ConfCreate("night", ConfCreateNew));
  if (!night->SetString("dim", "lights.mode") || !night->Save()) return 1;
  if (!config->Import(night.get())) return 1;
  night.release();  // `config` deletes it from now on
  if (const char* mode = config->GetString("lights.mode")) std::printf("lights: %s\n", mode);

  // Under another name, so that the file that was read stays as it is.
  if (!config->SetName("tidewatch-night", "") || !config->Save()) return 1;
  std::printf("saved: %s\n", config->GetFileName());

  config.reset();  // the tree and all that it imports; RemoveSection("") does the same
  return 0;
}
