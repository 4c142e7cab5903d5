// Showing sections.
#include "shown_section.h"

#include <unordered_set>

#include "text.h"

namespace confgrove::Tool {

const char* KindOf(Section* section) {
  switch (OwnType(section)) {
    case SectionType::String: return "string";
    case SectionType::Number: return section->GetDoubles(nullptr, 0, "") == 1 ? "number" : "array";
    case SectionType::Link: return "link";
    case SectionType::None: break;
  }
  return section->GetSectionCount("") > 0 ? "block" : "none";
}

std::string ValueText(Section* section) {
  switch (OwnType(section)) {
    case SectionType::String: return '"' + TextToUtf8(section->GetString("")) + '"';
    case SectionType::Link: return '@' + NameToUtf8(LinkTarget(section));
    case SectionType::None: return "";
    case SectionType::Number: break;
  }
  const std::vector<double> numbers = NumbersOf(section);
  if (numbers.size() == 1) return NumberText(numbers.front());
  std::string array;
  for (const double number : numbers) array += (array.empty() ? "[" : ", ") + NumberText(number);
  return array + "]";
}

std::string LineOf(Section* section) {
  const std::string value = ValueText(section);
  return NameToUtf8(PathOf(section)) + ' ' + KindOf(section) + (value.empty() ? "" : " ") + value;
}

std::vector<double> NumbersOf(Section* section) {
  ValueView value;
  FindValue(section, "", &value);
  return {value.numbers, value.numbers + value.count};
}

bool SameValue(Section* one, Section* other) {
  if (OwnType(one) != OwnType(other)) return false;
  switch (OwnType(one)) {
    case SectionType::String: return std::string(one->GetString("")) == other->GetString("");
    case SectionType::Number: return NumbersOf(one) == NumbersOf(other);
    case SectionType::Link: return std::string(LinkTarget(one)) == LinkTarget(other);
    case SectionType::None: break;
  }
  return true;
}

std::vector<Section*> FollowLinks(Config* config, Section* section) {
  std::vector<Section*> chain = {section};
  std::unordered_set<Section*> seen = {section};
  while (OwnType(chain.back()) == SectionType::Link) {
    Section* const next = FindSection(config, LinkTarget(chain.back()));
    if (next == nullptr || !seen.insert(next).second) break;
    chain.push_back(next);
  }
  return chain;
}

}  // namespace confgrove::Tool
