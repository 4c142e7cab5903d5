// From the difference of two trees to the edits of a file.
#include "text/tree_edits.h"

#include <algorithm>
#include <utility>

#include "text/editing.h"
#include "text/match.h"
#include "text/value_text.h"
#include "tree/node.h"

namespace confgrove {
namespace {

// Whether both have the same value and the same comments.
bool HasSameFields(const RealSection& a, const RealSection& b) {
  return SameValue(a, b) && a.comment().view() == b.comment().view() &&
         a.inline_comment().view() == b.inline_comment().view();
}

// Whether both have children of the same names in the same order.
bool HasSameChildren(const RealSection& a, const RealSection& b) {
  if (a.child_count() != b.child_count()) return false;
  for (std::int32_t i = 0; i < a.child_count(); ++i) {
    if (a.children->at(i)->name() != b.children->at(i)->name()) return false;
  }
  return true;
}

// The sections that differ in their value or their comments, and the blocks that differ in the
// names of their children; of those that stand within each other the outermost. The walk is in file
// order, in which a tree lies in memory.
std::vector<Pair> DifferentSections(const FileText& file, const RootSection& root) {
  struct Block {
    Pair here;
    const RealSection* in_file;
    std::int32_t next;         // child
    std::size_t found_before;  // it
  };
  std::vector<Pair> found;
  if (file.root()->child_count() != root.child_count()) return {{0, &root}};
  std::vector<Block> open{{{0, &root}, file.root(), 0, 0}};
  std::int32_t number = 1;
  while (!open.empty()) {
    Block& block = open.back();
    if (block.next == block.in_file->child_count()) {
      open.pop_back();
      continue;
    }
    const RealSection& in_file = *block.in_file->children->at(block.next);
    const RealSection& wanted = *block.here.section->children->at(block.next);
    ++block.next;
    if (in_file.name() != wanted.name()) {
      found.resize(block.found_before);
      found.push_back(block.here);
      number = file.NextNumber(block.here.number);
      open.pop_back();
    } else if (in_file.child_count() != wanted.child_count() || !HasSameFields(in_file, wanted)) {
      found.push_back({number, &wanted});
      number = file.NextNumber(number);
    } else {
      if (in_file.child_count() > 0) open.push_back({{number, &wanted}, &in_file, 0, found.size()});
      ++number;
    }
  }
  return found;
}

// Edits one section, and notes those in its body that are in both.
void EditSection(const Pair& here, Editing* editing, std::vector<Pair>* left) {
  const auto [number, section] = here;
  if (number != 0) {
    EditName(number, *section, editing);
    EditValue(number, *section, editing);
    EditCommentAbove(number, *section, editing);
    EditTail(number, *section, editing);
    if (editing->file.At(number).open.empty()) return;
    if (RemoveBody(number, *section, editing)) return;
  }
  if (HasSameChildren(editing->file.Node(number), *section)) {
    std::int32_t child = editing->file.FirstChild(number);
    for (std::int32_t i = 0; i < section->child_count(); ++i) {
      left->push_back({child, section->children->at(i)});
      child = editing->file.NextSibling(child);
    }
    return;
  }
  NoteIfEmptied(number, *section, editing);
  const Match match = MatchChildren(editing->file, number, *section);
  RemoveSections(match, editing);
  InsertSections(number, match, editing);
  for (const Match::Child& child : match.children) {
    if (child.number != 0) left->push_back({child.number, child.section});
  }
}

// What differs between one section of a file and one of a tree; null if nothing does.
const char* DifferenceOf(const FileText& file, const Pair& pair) {
  const RealSection& in_file = file.Node(pair.number);
  const RealSection& wanted = *pair.section;
  if (!SameComment(file, pair.number, wanted.comment().view())) {
    return "its comment would belong to another section, or would be another one";
  }
  if (pair.number != 0) {
    if (!SameValue(in_file, wanted)) return "it would have another value";
    if (in_file.inline_comment().view() != wanted.inline_comment().view()) {
      return "its inline comment would belong to another section, or would be another one";
    }
  }
  if (in_file.child_count() != wanted.child_count()) return "it would have other sections";
  for (std::int32_t i = 0; i < wanted.child_count(); ++i) {
    if (in_file.children->at(i)->name() != wanted.children->at(i)->name()) {
      return "its sections would have other names, or another order";
    }
  }
  return nullptr;
}

bool SameImports(const RootSection& in_file, const RootSection& wanted) {
  for (const auto& [name, imported] : wanted.imports) {
    if (imported != nullptr && in_file.imports.count(name) == 0) return false;
  }
  return std::all_of(in_file.imports.begin(), in_file.imports.end(), [&wanted](const auto& entry) {
    const auto found = wanted.imports.find(entry.first);
    return found != wanted.imports.end() && found->second != nullptr;
  });
}

}  // namespace

void Editing::Refuse(const RealSection& section, const char* reason) {
  if (reason == nullptr || !obstacle.reason.empty()) return;
  obstacle = {PathOf(section), reason};
}

void CheckNew(const RealSection& section, Editing* editing) {
  std::vector<const RealSection*> left{&section};
  while (!left.empty()) {
    const RealSection& here = *left.back();
    left.pop_back();
    editing->Refuse(here, FaultOfName(here.name()));
    editing->Refuse(here, FaultOfValue(here));
    editing->Refuse(here, FaultOfComments(here));
    for (std::int32_t i = 0; i < here.child_count(); ++i) left.push_back(here.children->at(i));
  }
}

TreeEdits EditsFor(const FileText& file, const RootSection& root, const Remedies& remedies) {
  Editing editing(file, remedies);
  EditImports(root, &editing);
  const bool all = remedies.around_changes || !remedies.displaced.empty();
  std::vector<Pair> left{{0, &root}};
  if (!all) left = DifferentSections(file, root);
  std::vector<Pair> kept;
  while (!left.empty()) {
    const Pair here = left.back();
    left.pop_back();
    EditSection(here, &editing, &left);
    if (remedies.around_changes && here.number != 0) kept.push_back(here);
  }
  RemedyAroundChanges(kept, &editing);
  return {std::move(editing.splices).ToEdits(file), std::move(editing.emptied),
          std::move(editing.obstacle)};
}

// In file order, in which a tree lies in memory.
bool SameTree(const RootSection& a, const RootSection& b) {
  struct Block {
    const RealSection *one, *other;
    std::int32_t next;  // child
  };
  if (!SameImports(a, b) || a.comment().view() != b.comment().view()) return false;
  if (a.child_count() != b.child_count()) return false;
  std::vector<Block> open{{&a, &b, 0}};
  while (!open.empty()) {
    Block& block = open.back();
    if (block.next == block.one->child_count()) {
      open.pop_back();
      continue;
    }
    const RealSection& x = *block.one->children->at(block.next);
    const RealSection& y = *block.other->children->at(block.next);
    ++block.next;
    if (x.name() != y.name() || !HasSameFields(x, y)) return false;
    if (x.child_count() != y.child_count()) return false;
    if (x.child_count() > 0) open.push_back({&x, &y, 0});
  }
  return true;
}

Obstacle FirstDifference(const FileText& file, const RootSection& root) {
  if (!SameImports(*file.root(), root)) return {"", "the file would have other imports"};
  std::vector<Pair> left{{0, &root}};
  while (!left.empty()) {
    const Pair here = left.back();
    left.pop_back();
    if (const char* reason = DifferenceOf(file, here)) return {PathOf(*here.section), reason};
    std::int32_t child = file.FirstChild(here.number);
    for (std::int32_t i = 0; i < here.section->child_count(); ++i) {
      left.push_back({child, here.section->children->at(i)});
      child = file.NextSibling(child);
    }
  }
  return {};
}

std::vector<const RealSection*> WithoutInlineComment(const FileText& file,
                                                     const RootSection& root) {
  std::vector<const RealSection*> without;
  std::vector<Pair> left{{0, &root}};
  while (!left.empty()) {
    const Pair here = left.back();
    left.pop_back();
    const RealSection& in_file = file.Node(here.number);
    if (here.number != 0 &&
        in_file.inline_comment().view() != here.section->inline_comment().view()) {
      without.push_back(here.section);
    }
    for (std::int32_t child = file.FirstChild(here.number); child != 0;
         child = file.NextSibling(child)) {
      const RealSection* same = here.section->FindChild(file.Node(child).name());
      if (same != nullptr) left.push_back({child, same});
    }
  }
  return without;
}

}  // namespace confgrove
