// where: tells where a section stands.
#include <confgrove/inspect.h>
#include <confgrove/values/look_up.h>

#include <iostream>
#include <memory>

#include "commands.h"
#include "messages.h"
#include "open_file.h"
#include "refusal.h"
#include "shown_section.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct WhereArguments {
  std::string file, path;
};

std::string PlaceText(const Place& place, const Config* config, Section* section,
                      const std::string& shown) {
  std::string text = ConfigOf(section) == config ? shown : FileName::ForSystem(place.file);
  if (place.line > 0) {
    text += ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
  }
  return text;
}

int ShowPlaces(const WhereArguments& given) {
  const std::unique_ptr<Config> config = LoadInput(given.file);
  const std::string path = PathFromShell(given.path);
  Section* const start = FindSection(config.get(), path.c_str());
  if (start == nullptr || path.empty()) RefuseMissing(given.file, path);

  std::vector<Section*> sections;  // the first one of each link hides the others
  std::vector<bool> hidden;
  const std::vector<Section*> chain = FollowLinks(config.get(), start);
  for (Section* const link : chain) {
    detail::AddLayers(config.get(), PathOf(link).c_str(), &sections);
    hidden.push_back(false);
    hidden.resize(sections.size(), true);
  }
  const std::vector<Place> places = Where(sections);
  for (std::size_t i = 0; i < sections.size(); ++i) {
    std::cout << PlaceText(places[i], config.get(), sections[i], given.file) << ": "
              << LineOf(sections[i]) << (hidden[i] ? " (hidden)" : "") << '\n';
  }
  if (OwnType(chain.back()) == SectionType::Link) {
    throw Refusal(given.file + ": '" + NameToUtf8(path) + "': its links run in a circle");
  }
  return ExitDone;
}

}  // namespace

void AddWhere(Command* tool) {
  const auto given = std::make_shared<WhereArguments>();
  Command where = tool->AddCommand("where", "Print in which file and line a section stands");
  where.AddFile(&given->file);
  where.AddPath(&given->path);
  where.SetAction([given] { return ShowPlaces(*given); });
}

}  // namespace confgrove::Tool
