// Writing JSON.
#include "json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <utility>
#include <vector>

#include "file_name.h"
#include "shown_section.h"
#include "standard_input.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

using Json = nlohmann::ordered_json;

// Whole numbers come without a fraction, as people write them.
Json NumberValue(double number) {
  constexpr double ExactTo = 9007199254740992;  // 2 to the 53rd
  const bool whole = std::trunc(number) == number && std::fabs(number) <= ExactTo;
  if (whole && !(number == 0 && std::signbit(number))) return static_cast<std::int64_t>(number);
  return number;
}

// Where sections stand; empty if nobody asks.
using Places = std::unordered_map<Section*, Place>;

void Collect(Section* section, std::vector<Section*>* sections) {
  for (std::int32_t i = 0; i < section->GetSectionCount(""); ++i) {
    sections->push_back(section->GetSection("", i));
    Collect(sections->back(), sections);
  }
}

Places PlacesOf(std::vector<Section*> sections) {
  const std::vector<Place> found = Where(sections);
  Places places;
  for (std::size_t i = 0; i < found.size(); ++i) places.emplace(sections[i], found[i]);
  return places;
}

void AddPlace(Section* section, const Places& places, Json* object) {
  const auto found = places.find(section);
  if (found == places.end()) return;
  const Place& place = found->second;
  (*object)["file"] = TextToUtf8(FromKnownInput(FileName::ForSystem(place.file)));
  (*object)["line"] = place.line;
  (*object)["column"] = place.column;
}

void AddCommentsAndSections(Section* section, const Places& places, Json* object);

Json Object(Section* section, const Places& places) {
  Json object = ValueObject(section);
  AddPlace(section, places, &object);
  AddCommentsAndSections(section, places, &object);
  return object;
}

void AddCommentsAndSections(Section* section, const Places& places, Json* object) {
  const std::string comment = section->GetComment("");
  const std::string inline_comment = section->GetComment("", true);
  if (!comment.empty()) (*object)["comment"] = TextToUtf8(comment);
  if (!inline_comment.empty()) (*object)["inline_comment"] = TextToUtf8(inline_comment);
  const std::int32_t count = section->GetSectionCount("");
  if (count == 0) return;
  Json& sections = (*object)["sections"] = Json::object();
  for (std::int32_t i = 0; i < count; ++i) {
    sections.push_back(
        {NameToUtf8(section->GetName("", i)), Object(section->GetSection("", i), places)});
  }
}

}  // namespace

Json ValueObject(Section* section) {
  Json object = {{"kind", KindOf(section)}};
  switch (OwnType(section)) {
    case SectionType::String: object["value"] = TextToUtf8(section->GetString("")); break;
    case SectionType::Link: object["target"] = NameToUtf8(LinkTarget(section)); break;
    case SectionType::None: break;
    case SectionType::Number: {
      const std::vector<double> numbers = NumbersOf(section);
      if (numbers.size() == 1) {
        object["value"] = NumberValue(numbers.front());
      } else {
        for (const double number : numbers) object["value"].push_back(NumberValue(number));
      }
    }
  }
  return object;
}

std::string ToJson(Section* section, bool with_places) {
  std::vector<Section*> sections = {section};
  Collect(section, &sections);
  return Object(section, with_places ? PlacesOf(std::move(sections)) : Places()).dump(2);
}

std::string ToJson(Config* config, bool with_places) {
  std::vector<Section*> sections;
  if (with_places) Collect(config, &sections);
  Json object = Json::object();
  for (Config* const import : Imports(config)) {
    object["imports"].push_back(TextToUtf8(import->GetName("")));
  }
  AddCommentsAndSections(config, PlacesOf(std::move(sections)), &object);
  return object.dump(2);
}

}  // namespace confgrove::Tool
