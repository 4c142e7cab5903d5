// flatten: prints one file that answers every path as a file and its imports do.
#include <confgrove/values/open.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "commands.h"
#include "layers.h"
#include "open_file.h"
#include "refusal.h"
#include "shown_section.h"
#include "temporary_file.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

std::string PlaceText(const Place& place, bool own, const std::string& shown) {
  const std::string file = own ? shown : FileName::ForSystem(place.file);
  return file + (place.line > 0 ? ':' + std::to_string(place.line) : "");
}

// The settings in an order that can be read: a link stands behind what it leads to. Siblings keep
// their order but where a link asks for another.
class ReadableOrder {
 public:
  // Refuses links for which there is no such order.
  ReadableOrder(Config* config, const LayeredSection& top, std::string shown)
      : config_(config), top_(top), shown_(std::move(shown)) {
    NoteLinks(top);
  }

  // The children of a block.
  std::vector<const LayeredSection*> Of(const LayeredSection& block) const;

 private:
  // What a section has to stand behind, among its siblings, for the sake of a link.
  struct Need {
    const LayeredSection* sibling;
    const LayeredSection* link;
  };

  // A section on the way from one to what it needs.
  struct Step {
    const LayeredSection* section;
    std::size_t next_need;
  };

  enum class State { New, Begun, Done };

  void NoteLinks(const LayeredSection& setting);
  void NoteNeed(const LayeredSection& link);
  const std::vector<Need>& NeedsOf(const LayeredSection* section) const;
  [[noreturn]] void RefuseCircle(const std::vector<Step>& way,
                                 const LayeredSection* met_again) const;

  Config* config_;
  const LayeredSection& top_;
  std::string shown_;
  std::unordered_map<const LayeredSection*, std::vector<Need>> needs_;
};

void ReadableOrder::NoteLinks(const LayeredSection& setting) {
  if (OwnType(setting.section) == SectionType::Link) NoteNeed(setting);
  for (const auto& child : setting.children) NoteLinks(*child);
}

void ReadableOrder::NoteNeed(const LayeredSection& link) {
  const std::string path = LinkTarget(link.section);
  const LayeredSection* before = top_.Find(path);
  const std::string named = "'" + NameToUtf8(PathOf(link.section)) + "'";
  if (before == nullptr)
    throw Refusal(shown_ + ": can't be flattened: " + named + " leads nowhere");
  const bool is_deeper = before->depth > link.depth;
  const LayeredSection* behind = &link;
  while (before->depth > behind->depth) before = before->parent;
  while (behind->depth > before->depth) behind = behind->parent;
  if (before == behind) {
    RefuseUnless(!is_deeper, shown_ + ": can't be flattened: " + named + " leads to '" +
                                 NameToUtf8(path) + "', which would stand below it");
    return;
  }
  while (before->parent != behind->parent) {
    before = before->parent;
    behind = behind->parent;
  }
  needs_[behind].push_back({before, &link});
}

const std::vector<ReadableOrder::Need>& ReadableOrder::NeedsOf(
    const LayeredSection* section) const {
  static const std::vector<Need> None;
  const auto found = needs_.find(section);
  return found == needs_.end() ? None : found->second;
}

std::vector<const LayeredSection*> ReadableOrder::Of(const LayeredSection& block) const {
  std::vector<const LayeredSection*> order;
  std::unordered_map<const LayeredSection*, State> states;
  std::vector<Step> way;  // not the stack: there can be as many as sections
  const auto begin = [&](const LayeredSection* section) {
    states[section] = State::Begun;
    way.push_back({section, 0});
  };
  for (const auto& child : block.children) {
    if (states[child.get()] == State::New) begin(child.get());
    while (!way.empty()) {
      Step& step = way.back();
      const std::vector<Need>& needs = NeedsOf(step.section);
      if (step.next_need == needs.size()) {
        states[step.section] = State::Done;
        order.push_back(step.section);
        way.pop_back();
        continue;
      }
      const LayeredSection* const needed = needs[step.next_need++].sibling;
      if (states[needed] == State::Begun) RefuseCircle(way, needed);
      if (states[needed] == State::New) begin(needed);
    }
  }
  return order;
}

void ReadableOrder::RefuseCircle(const std::vector<Step>& way,
                                 const LayeredSection* met_again) const {
  std::string links;
  std::size_t at = way.size();
  do {
    --at;
    const LayeredSection* const link = NeedsOf(way[at].section)[way[at].next_need - 1].link;
    const bool own = ConfigOf(link->section) == config_;
    links += (links.empty() ? "'" : ", '") + NameToUtf8(PathOf(link->section)) + "' (" +
             PlaceText(Where(link->section), own, shown_) + ") to '" +
             NameToUtf8(LinkTarget(link->section)) + "'";
  } while (way[at].section != met_again);
  throw Refusal(shown_ +
                ": can't be flattened: a link has to stand behind what it leads to, and there is "
                "no such order for the links " +
                links);
}

// A comment that no section keeps. It stays on its line and ends where it should.
std::string BlockComment(std::string text) {
  for (char& c : text) {
    if (c == '\n' || c == '\r' || c == '\0') c = '?';
  }
  for (std::size_t at = 0; (at = text.find("*/", at)) != std::string::npos;) text.insert(++at, " ");
  return "/*" + std::string(text.empty() || text.front() != ' ' ? " " : "") + text + " */";
}

// Calls `use` with each line of a comment.
template <typename Use>
void ForEachLine(const std::string& comment, Use use) {
  for (std::size_t at = 0, end = 0; at < comment.size(); at = end + 1) {
    end = std::min(comment.find('\n', at), comment.size());
    use(comment.substr(at, end - at));
  }
}

std::string NumberInFile(double number) {
  if (std::isinf(number)) return number > 0 ? "1e999" : "-1e999";
  return NumberText(number);
}

// The value as it stands behind a name.
std::string ValueInFile(Section* section) {
  switch (OwnType(section)) {
    case SectionType::String: return std::string(" = \"") + section->GetString("") + '"';
    case SectionType::Link: return std::string(" = @") + LinkTarget(section);
    case SectionType::None: return "";
    case SectionType::Number: break;
  }
  const std::vector<double> numbers = NumbersOf(section);
  if (numbers.size() == 1) return " = " + NumberInFile(numbers.front());
  std::string array;
  for (const double number : numbers) array += (array.empty() ? "" : ",") + NumberInFile(number);
  return " = [" + array + "]";
}

class FlatText {
 public:
  FlatText(Config* config, const LayeredSection& top, const std::string& shown)
      : config_(config), order_(config, top, shown) {
    CollectImported(top);
    const std::vector<Place> places = Where(imported_);
    for (std::size_t i = 0; i < places.size(); ++i) {
      origins_[imported_[i]] = BlockComment(PlaceText(places[i], false, shown));
    }
    const std::string head = config->GetComment("");
    ForEachLine(head, [this](const std::string& line) { text += BlockComment(line) + '\n'; });
    if (!head.empty()) text += '\n';
    WriteBelow(top, "");
  }

  std::string text;

 private:
  void CollectImported(const LayeredSection& block) {
    for (const auto& child : block.children) {
      if (ConfigOf(child->section) != config_) imported_.push_back(child->section);
      CollectImported(*child);
    }
  }

  void WriteBelow(const LayeredSection& block, const std::string& indent);
  void WriteLines(Section* section, bool is_first, const std::string& indent);

  Config* config_;
  ReadableOrder order_;
  std::vector<Section*> imported_;                     // sections of imported files
  std::unordered_map<Section*, std::string> origins_;  // of those: a comment
};

void FlatText::WriteLines(Section* section, bool is_first, const std::string& indent) {
  const std::string comment = section->GetComment("");
  const std::string inline_comment = section->GetComment("", true);
  if (!comment.empty() && !is_first) text += '\n';
  ForEachLine(comment, [&](const std::string& line) { text += indent + '#' + line + '\n'; });
  text += indent + section->GetName("") + ValueInFile(section);
  const auto origin = origins_.find(section);
  if (origin != origins_.end()) text += ' ' + origin->second;
  if (!inline_comment.empty()) text += " #" + inline_comment;
  text += '\n';
}

void FlatText::WriteBelow(const LayeredSection& block, const std::string& indent) {
  bool is_first = true;
  for (const LayeredSection* const setting : order_.Of(block)) {
    WriteLines(setting->section, is_first, indent);
    is_first = false;
    const bool has_value = OwnType(setting->section) != SectionType::None;
    if (setting->children.empty() && has_value) continue;
    text += indent + "{\n";
    WriteBelow(*setting, indent + '\t');
    text += indent + "}\n";
  }
}

bool SameSetting(Section* one, Section* other) {
  const auto comment = [](Section* section, bool inline_comment) {
    return std::string_view(section->GetComment("", inline_comment));
  };
  return SameValue(one, other) && comment(one, false) == comment(other, false) &&
         comment(one, true) == comment(other, true);
}

// The first block or setting of `one` that isn't the same in `other`; null if all are.
const LayeredSection* FirstDifference(const LayeredSection& one, const LayeredSection& other) {
  for (const auto& child : one.children) {
    const auto same = other.by_name.find(child->section->GetName(""));
    if (same == other.by_name.end()) return child.get();
    if (!SameSetting(child->section, same->second->section)) return child.get();
    const LayeredSection* const below = FirstDifference(*child, *same->second);
    if (below != nullptr) return below;
  }
  return one.children.size() == other.children.size() ? nullptr : &one;
}

// Reads the text back, and refuses it if any path has another answer than in `top`.
void Prove(const std::string& text, const LayeredSection& top, const std::string& shown) {
  const std::string refusal = shown + ": can't be flattened: ";
  std::error_code error;
  // The working directory where there is no such directory.
  const std::filesystem::path directory = std::filesystem::temp_directory_path(error) / "";
  std::istringstream content(text);
  const TemporaryFile copy(directory.u8string(), &content);
  RefuseUnless(!copy.error(),
               refusal + "no copy to read back can be made: " + copy.error().message());
  const Opened flat = Open(copy.path(), ConfCreateOpenReadOnly);
  if (!flat) throw Refusal(refusal + "the result can't be read: " + flat.problems.front().message);
  const auto flat_top = Layered(flat.get(), shown);
  const LayeredSection* const difference = FirstDifference(top, *flat_top);
  if (difference == nullptr) return;
  throw Refusal(refusal + "'" + NameToUtf8(PathOf(difference->section)) + "' would be another");
}

int Flatten(const std::string& file) {
  const std::unique_ptr<Config> config = LoadInput(file);
  const std::unique_ptr<LayeredSection> top = Layered(config.get(), file);
  const std::string text = FlatText(config.get(), *top, file).text;
  Prove(text, *top, file);
  std::cout << text;
  return ExitDone;
}

}  // namespace

void AddFlatten(Command* tool) {
  const auto file = std::make_shared<std::string>();
  Command flatten = tool->AddCommand("flatten", "Print a file and all that it imports as one file");
  flatten.AddFile(file.get());
  flatten.SetAction([file] { return Flatten(*file); });
}

}  // namespace confgrove::Tool
