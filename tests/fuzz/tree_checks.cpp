#include "tree_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tree/path.h"

using namespace confgrove;

namespace {

bool ChildrenAreSound(const RealSection& section, Sections* seen) {
  bool sound = seen->insert(&section).second &&
               (section.type != SectionType::Number || section.numbers().size() > 0);
  for (std::int32_t i = 0; sound && i < section.child_count(); ++i) {
    const RealSection* child = section.children->at(i);
    sound = child != nullptr && child->index == i && child->parent == &section &&
            child->read_only == section.read_only && section.FindChild(child->name()) == child &&
            ChildrenAreSound(*child, seen);
  }
  return sound;
}

bool Holds(std::string_view text, const char* bytes) {
  return text.find_first_of(bytes) != std::string_view::npos;
}

bool HasSixDigits(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", number);
  return std::isfinite(number) && std::strtod(text, nullptr) == number;
}

bool ValueFits(const RealSection& section) {
  switch (section.type) {
    case SectionType::None: return section.child_count() > 0;
    case SectionType::String: return !Holds(section.text().view(), "\"\r\n");
    case SectionType::Link: return !section.text().empty() && CheckPath(section.text().view());
    default: return std::all_of(section.numbers().begin(), section.numbers().end(), HasSixDigits);
  }
}

}  // namespace

bool IsSound(const RootSection& root, Sections* seen) {
  bool sound = root.parent == nullptr && ChildrenAreSound(root, seen);
  for (const auto& [key, one] : root.imports) {
    sound = sound && (one == nullptr ||
                      (one->name() == key && one->parent_config == &root && IsSound(*one, seen)));
  }
  return sound;
}

bool FitsAFile(const RealSection& section) {
  bool fits = true;
  for (std::int32_t i = 0; fits && i < section.child_count(); ++i) {
    const RealSection& child = *section.children->at(i);
    // An empty block is written, but read as a section without one.
    fits = !child.name().empty() && CheckPath(child.name()) && !Holds(child.name(), ".") &&
           ValueFits(child) && FitsAFile(child) && child.HasBlock() == (child.child_count() > 0) &&
           !Holds(child.comment().view(), "\r") && !Holds(child.inline_comment().view(), "\r\n");
  }
  return fits;
}

std::string Dump(const RealSection& section) {
  std::ostringstream out;
  for (std::int32_t i = 0; i < section.child_count(); ++i) {
    const RealSection& child = *section.children->at(i);
    out << child.comment().view() << child.name() << '#' << child.inline_comment().view() << '\n'
        << static_cast<int>(child.type);
    if (child.type == SectionType::Number) {
      for (const double number : child.numbers()) out << ' ' << number;
    } else if (child.type != SectionType::None) {
      out << child.text().view();
    }
    out << '{' << Dump(child) << '}';
  }
  return out.str();
}
