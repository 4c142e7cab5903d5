// Links and empty blocks.
#include "removal.h"

#include <confgrove/save_in_place.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "refusal.h"

namespace confgrove::Tool {
namespace {

std::string Holder(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string::npos ? "" : path.substr(0, dot);
}

// Whether a link leads to what has been removed.
bool IsBroken(const Change& change, Section* link) {
  const std::string target = LinkTarget(link);
  if (change.Own(target) != nullptr) return false;
  for (std::string path = target; !path.empty(); path = Holder(path)) {
    if (change.removed.count(path) > 0) return true;
  }
  return false;
}

// "FILE:LINE: 'link' leads to 'target'", for each link.
void ComplainOf(const Change& change, const std::vector<Section*>& links) {
  const std::vector<Place> places = Where(links);
  for (std::size_t i = 0; i < links.size(); ++i) {
    const std::string line = places[i].line > 0 ? ":" + std::to_string(places[i].line) : "";
    Complain(change.name.shown + line + ": " + Quoted(PathOf(links[i])) + " leads to " +
             Quoted(LinkTarget(links[i])));
  }
}

// Whether a comment stands between the braces of a block that an edit leaves empty. `edits` are
// those of `text`, and `name` is the place of the block's name in it. If it isn't certain that
// there is none, there is one.
bool HoldsComment(const std::string& text, const std::vector<Edit>& edits, const Place& name) {
  auto inner =
      std::lower_bound(edits.begin(), edits.end(), name.offset + name.length,
                       [](const Edit& edit, std::size_t offset) { return edit.offset < offset; });
  while (inner != edits.end() && inner->length == 0) ++inner;
  if (inner == edits.end()) return true;
  constexpr const char* Blanks = " \t\r\n";
  const std::size_t open = text.find_last_not_of(Blanks, inner->offset - 1);
  if (text[open] != '{') return true;
  const std::size_t line = text.find_last_of("\r\n", open) + 1;
  if (text.substr(line, open - line).find('#') != std::string::npos) return true;
  // Further edits can take out what follows.
  std::size_t at = inner->offset + inner->length;
  for (auto next = inner + 1;; ++next) {
    at = std::min(text.find_first_not_of(Blanks, at), text.size());
    if (next == edits.end() || next->offset > at) break;
    at = std::max(at, next->offset + next->length);
  }
  if (at == text.size() || text[at] != '}') return true;
  const std::size_t behind = text.find_first_not_of(Blanks, at + 1);
  return behind != std::string::npos && text[behind] == '{';  // a second body
}

// Those of the blocks that are empty.
std::vector<Section*> EmptyOnes(const Change& change, const std::set<std::string>& blocks) {
  std::vector<Section*> empty;
  for (const std::string& path : blocks) {
    Section* const block = change.Own(path);
    if (block == nullptr || OwnType(block) != SectionType::None) continue;
    if (block->GetSectionCount("") == 0) empty.push_back(block);
  }
  return empty;
}

// Renames paths that lead through a renamed section.
void Follow(const std::string& from, const std::string& to, std::set<std::string>* paths) {
  std::set<std::string> renamed;
  for (const std::string& path : *paths) {
    renamed.insert(IsAtOrBelow(path, from) ? to + path.substr(from.size()) : path);
  }
  *paths = std::move(renamed);
}

}  // namespace

void Remove(Change* change, const std::string& path) {
  change->RequireOwn(path)->RemoveSection("");
  change->ForgetLinks();
  change->removed.insert(path);
  if (path.find('.') != std::string::npos) change->thinned.insert(Holder(path));
}

void Rename(Change* change, const std::string& path, const std::string& new_name) {
  Section* const section = change->RequireOwn(path);
  const std::string new_path = path.substr(0, path.rfind('.') + 1) + new_name;
  if (new_path == path) return;
  RefuseUnless(change->Own(new_path) == nullptr,
               change->name.shown + ": " + Quoted(new_path) + " is there already");
  RefuseUnless(section->SetName(new_name.c_str(), ""),
               change->name.shown + ": " + Quoted(path) + " can't be renamed");
  for (Section* const link : change->Links()) {
    const std::string target = LinkTarget(link);
    if (IsAtOrBelow(target, path))
      link->SetLink((new_path + target.substr(path.size())).c_str(), "");
  }
  Follow(path, new_path, &change->removed);
  Follow(path, new_path, &change->thinned);
}

void SettleLinks(Change* change, bool remove_links) {
  while (!change->removed.empty()) {
    std::vector<Section*> links = change->Links();
    const auto broken = [change](Section* link) { return !IsBroken(*change, link); };
    links.erase(std::remove_if(links.begin(), links.end(), broken), links.end());
    if (links.empty()) return;
    const bool with_block = std::any_of(
        links.begin(), links.end(), [](Section* link) { return link->GetSectionCount("") > 0; });
    if (!remove_links || with_block) {
      ComplainOf(*change, links);
      throw Refusal(change->name.shown + ": left as it is; " +
                    (remove_links ? "a link with sections below it is yours to remove"
                                  : "--links removes these links too"));
    }
    for (Section* const link : links) Remove(change, PathOf(link));
  }
}

void SettleEmptyBlocks(Change* change) {
  std::set<std::string> blocks = change->thinned;
  for (;;) {
    const std::vector<Section*> empty = EmptyOnes(*change, blocks);
    if (empty.empty()) return;
    blocks.clear();
    const SaveResult preview = PreviewSave(change->config.get());
    const std::vector<Place> names = Where(empty);
    std::map<std::string, Section*> links;  // by target
    for (Section* const link : change->Links()) links[LinkTarget(link)] = link;
    for (std::size_t i = 0; i < empty.size(); ++i) {
      const std::string path = PathOf(empty[i]);
      const auto link = links.find(path);
      std::string reason;
      if (link != links.end()) {
        reason = Quoted(PathOf(link->second)) + " leads to it";
      } else if (names[i].line == 0) {
        reason = "it has been renamed too";
      } else if (HoldsComment(change->bytes, preview.edits, names[i])) {
        reason = "a comment stands in it";
      }
      if (reason.empty()) {
        empty[i]->RemoveSection("");
        if (!Holder(path).empty()) blocks.insert(Holder(path));
      } else {
        change->notes.push_back(Quoted(path) + " stays, empty: " + reason);
      }
    }
    change->ForgetLinks();
  }
}

}  // namespace confgrove::Tool
