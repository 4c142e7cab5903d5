// Writing JSON.
#include "json.h"

#include <cmath>
#include <nlohmann/json.hpp>

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

void AddCommentsAndSections(const Node& node, Json* object);

Json Object(const Node& node) {
  Json object = {{"kind", KindOf(node)}};
  switch (node.type) {
    case SectionType::String: object["value"] = TextToUtf8(node.text); break;
    case SectionType::Link: object["target"] = NameToUtf8(node.text); break;
    case SectionType::None: break;
    case SectionType::Number:
      if (node.numbers.size() == 1) {
        object["value"] = NumberValue(node.numbers.front());
      } else {
        for (const double number : node.numbers) object["value"].push_back(NumberValue(number));
      }
  }
  AddCommentsAndSections(node, &object);
  return object;
}

void AddCommentsAndSections(const Node& node, Json* object) {
  if (!node.comment.empty()) (*object)["comment"] = TextToUtf8(node.comment);
  if (!node.inline_comment.empty()) (*object)["inline_comment"] = TextToUtf8(node.inline_comment);
  if (node.children.empty()) return;
  Json& sections = (*object)["sections"] = Json::object();
  for (const Node& child : node.children)
    sections.push_back({NameToUtf8(child.name), Object(child)});
}

}  // namespace

std::string ToJson(const Node& node) { return Object(node).dump(2); }

std::string ToJson(const Node& top, const std::vector<std::string>& imports) {
  Json object = Json::object();
  for (const std::string& name : imports) object["imports"].push_back(TextToUtf8(name));
  AddCommentsAndSections(top, &object);
  return object.dump(2);
}

}  // namespace confgrove::Tool
