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

// The paths of the blocks that the change leaves empty but for a comment; all of `empty` if what
// it would do can't be told.
std::set<std::string> BlocksWithComment(const Change& change, const std::vector<Section*>& empty) {
  const SaveResult preview = PreviewSave(change.config.get());
  std::set<std::string> blocks;
  for (const EmptiedBlock& block : preview.emptied) {
    if (block.holds_more) blocks.insert(block.path);
  }
  if (preview) return blocks;
  for (Section* const section : empty) blocks.insert(PathOf(section));
  return blocks;
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
    const std::set<std::string> with_comment = BlocksWithComment(*change, empty);
    std::map<std::string, Section*> links;  // by target
    for (Section* const link : change->Links()) links[LinkTarget(link)] = link;
    for (Section* const block : empty) {
      const std::string path = PathOf(block);
      const auto link = links.find(path);
      std::string reason;
      if (link != links.end()) {
        reason = Quoted(PathOf(link->second)) + " leads to it";
      } else if (with_comment.count(path) > 0) {
        reason = "a comment or an import stands in it";
      }
      if (reason.empty()) {
        block->RemoveSection("");
        if (!Holder(path).empty()) blocks.insert(Holder(path));
      } else {
        change->notes.push_back(Quoted(path) + " stays, empty: " + reason);
      }
    }
    change->ForgetLinks();
  }
}

}  // namespace confgrove::Tool
