// Which sections of a file are which of a tree.
#include "text/match.h"

#include <cstring>

namespace confgrove {
namespace {

// Whether two sections of different names are likely one that was renamed.
bool LookAlike(const RealSection& a, const RealSection& b) {
  if (!SameValue(a, b) || a.child_count() != b.child_count()) return false;
  for (std::int32_t i = 0; i < a.child_count(); ++i) {
    if (a.children->at(i)->name() != b.children->at(i)->name()) return false;
  }
  return true;
}

// Pairs what is missing in the file between two sections that are in both with what is new there.
// In front of a section that has kept its place nothing can be new but by a new name.
void PairRenamed(const FileText& file, bool at_end, const std::vector<std::int32_t>& missing,
                 const std::vector<Match::Child*>& fresh, std::vector<std::int32_t>* removed) {
  const bool in_order = !at_end && missing.size() == fresh.size();
  std::size_t next = 0;
  for (Match::Child* child : fresh) {
    std::size_t i = next;
    while (i < missing.size() && !in_order && !LookAlike(file.Node(missing[i]), *child->section)) {
      ++i;
    }
    if (i == missing.size()) continue;
    child->number = missing[i];
    removed->insert(removed->end(), missing.begin() + static_cast<std::ptrdiff_t>(next),
                    missing.begin() + static_cast<std::ptrdiff_t>(i));
    next = i + 1;
  }
  removed->insert(removed->end(), missing.begin() + static_cast<std::ptrdiff_t>(next),
                  missing.end());
}

}  // namespace

bool SameValue(const RealSection& a, const RealSection& b) {
  if (a.type != b.type) return false;
  switch (a.type) {
    case SectionType::None: return true;
    case SectionType::String:
    case SectionType::Link: return a.text().view() == b.text().view();
    case SectionType::Number: break;
  }
  const NumberList one = a.numbers();
  const NumberList other = b.numbers();
  return one.size() == other.size() &&
         std::memcmp(one.begin(), other.begin(), one.size() * sizeof(double)) == 0;
}

Match MatchChildren(const FileText& file, std::int32_t block, const RealSection& in_memory) {
  Match match;
  const RealSection& in_file = file.Node(block);
  std::vector<std::int32_t> numbers;  // of the children in the file
  for (std::int32_t child = file.FirstChild(block); child != 0; child = file.NextSibling(child)) {
    numbers.push_back(child);
  }

  // Those that are in both keep their places up to the first that stands before one it stood
  // behind.
  std::vector<bool> kept(numbers.size());
  std::int32_t last = -1;
  bool in_place = true;
  for (std::int32_t i = 0; i < in_memory.child_count(); ++i) {
    const RealSection* child = in_memory.children->at(i);
    const RealSection* same = in_file.FindChild(child->name());
    const bool stays = in_place && same != nullptr && same->index > last;
    in_place = in_place && (same == nullptr || stays);
    match.children.push_back({child, stays ? numbers[static_cast<std::size_t>(same->index)] : 0});
    if (!stays) continue;
    last = same->index;
    kept[static_cast<std::size_t>(last)] = true;
  }

  std::size_t at = 0;
  std::vector<std::int32_t> missing;
  std::vector<Match::Child*> fresh;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (!kept[i]) {
      missing.push_back(numbers[i]);
      continue;
    }
    for (; match.children[at].number != numbers[i]; ++at) fresh.push_back(&match.children[at]);
    ++at;
    PairRenamed(file, false, missing, fresh, &match.removed);
    missing.clear();
    fresh.clear();
  }
  for (; at < match.children.size(); ++at) fresh.push_back(&match.children[at]);
  PairRenamed(file, true, missing, fresh, &match.removed);
  return match;
}

}  // namespace confgrove
