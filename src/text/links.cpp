// Where a link may have been meant to lead.
#include "text/links.h"

#include <algorithm>
#include <utility>

#include "text/lines.h"
#include "text/nearest.h"

namespace confgrove {
namespace {

// More are not looked at for what they could have meant: nobody reads so many.
constexpr std::int32_t MostSuggestions = 50;

std::string_view LastName(std::string_view path) {
  return path.substr(path.rfind('.') + 1);  // which is 0 without a dot
}

}  // namespace

void Links::Follow(std::size_t file) {
  const Survey& survey = tree_[file];
  for (const std::int32_t link : survey.links()) {
    Finding& found = findings_[static_cast<std::size_t>(link)];
    if (found.cause < 0) Settle(survey, &found);
  }
}

void Links::Settle(const Survey& survey, Finding* found) {
  const std::string_view path = found->span.In(survey.text()).substr(1);
  const SectionMap& sections = survey.sections();
  const std::int32_t target = sections.Find(path);
  found->text = "no section " + Quoted(path);
  if (target != NoSection && sections[target].span.begin > found->span.begin) {
    return PointToLater(survey, target, found);
  }
  for (std::int32_t at = target; at != NoSection; at = sections[at].parent) {
    if (sections[at].cause < 0) continue;
    found->cause = sections[at].cause;
    return;
  }
  if (FollowsFromImport(survey, path, found) || ++looked_up_ > MostSuggestions) return;
  Suggest(TargetsFrom(found->file), path, found);
}

bool Links::FollowsFromImport(const Survey& survey, std::string_view path, Finding* found) const {
  for (const std::int32_t import : survey.imports()) {
    const Finding& failed = findings_[static_cast<std::size_t>(import)];
    if (failed.span.begin > found->span.begin) break;
    const std::size_t top = tree_.Find(ImportTree::NameIn(failed.span.In(survey.text())));
    bool leads = top == tree_.size() || !tree_[top].file().found;
    for (std::size_t file = top; file < tree_.size() && !leads; ++file) {
      leads = tree_.IsWithin(file, top) && tree_[file].sections().Find(path) != NoSection;
    }
    if (!leads) continue;
    found->cause = import;
    return true;
  }
  // What is imported behind the end of reading isn't known.
  const auto& pieces = survey.file().record.pieces;
  const bool unknown =
      !found->is_read && std::any_of(pieces.begin(), pieces.end(), [&](const Piece& piece) {
        return piece.kind == PieceKind::PassedOver && survey.text()[piece.begin] == '$' &&
               piece.begin >= survey.file().record.read_end;
      });
  if (!unknown) return false;
  for (std::size_t i = 0; i < findings_.size(); ++i) {
    const Finding& stop = findings_[i];
    if (stop.file != found->file || !stop.is_read || !stop.is_error) continue;
    found->cause = static_cast<std::int32_t>(i);
    return true;
  }
  return false;
}

void Links::PointToLater(const Survey& survey, std::int32_t target, Finding* found) {
  found->text = "the section stands further down: a link comes behind its target";
  found->related.push_back({found->file, survey.sections()[target].span, "it stands here"});
  if (++looked_up_ <= MostSuggestions) MoveBehind(survey, target, found);
}

std::vector<Links::Target> Links::TargetsFrom(std::size_t top) const {
  std::vector<Target> targets;
  for (std::size_t file = top; file < tree_.size(); ++file) {
    if (!tree_.IsWithin(file, top)) continue;
    const SectionMap& sections = tree_[file].sections();
    for (std::int32_t i = 1; i < sections.size(); ++i) {
      if (sections[i].cause < 0) targets.push_back({file, i, sections.PathOf(i)});
    }
  }
  return targets;
}

// The nearest path, or the one section of that name that stands in another block.
void Links::Suggest(const std::vector<Target>& targets, std::string_view path, Finding* found) {
  Nearest nearest(path);
  const Target* near = nullptr;
  const Target* same_name = nullptr;
  bool several = false;
  for (const Target& target : targets) {
    if (nearest.Take(target.path)) near = &target;
    if (LastName(target.path) == LastName(path)) {
      several = same_name != nullptr;
      same_name = &target;
    }
  }
  const Target* meant = nearest.IsClear() ? near : (several ? nullptr : same_name);
  if (meant == nullptr) return;
  const Span span = tree_[meant->file].sections()[meant->section].span;
  if (meant->path == path) {
    found->text = "the section comes with an import further down";
    found->related.push_back({meant->file, span, "it stands here"});
    return;
  }
  found->text += "; did you mean " + Quoted(meant->path) + "?";
  found->related.push_back({meant->file, span, "it stands here"});
  if (meant->file == found->file && span.begin > found->span.begin) return;
  found->ways_out.push_back(
      {"write '@" + meant->path + "'", false, {{found->span, "@" + meant->path}}});
}

// Moves the line of a link behind the line on which its target ends, if both are in one block and
// the line holds nothing else.
void Links::MoveBehind(const Survey& survey, std::int32_t target, Finding* found) {
  const std::string_view text = survey.text();
  const SectionMap& sections = survey.sections();
  std::int32_t link = sections.size() - 1;
  while (link > 0 && sections[link].span.begin > found->span.begin) --link;
  while (target > 0 && sections[target].parent != sections[link].parent) {
    target = sections[target].parent;
  }
  const std::size_t begin = LineBegin(text, sections[link].span.begin);
  const std::size_t end = LineEnd(text, found->span.end);
  const std::size_t behind = SkipBlanks(text, found->span.end);
  const std::size_t place = target > 0 ? LineEnd(text, sections[target].end) : 0;
  const bool alone = IsFirstOnLine(text, sections[link].span.begin) &&
                     (behind == end || text[behind] == '#') && end < text.size() && place > end &&
                     IsLastOnLine(text, sections[target].end);
  if (!alone || sections[link].span.begin < begin) return;
  bool safe = true;
  const std::string path = sections.PathOf(link);
  for (const Piece& piece : survey.file().record.pieces) {
    if (piece.kind == PieceKind::CommentAbove && piece.begin < begin && piece.end + 1 >= begin) {
      safe = false;  // it would stay behind
    }
    const std::string_view bytes = Span{piece.begin, piece.end}.In(text);
    if (piece.begin > end && piece.end < place && bytes.front() == '@' &&
        bytes.substr(1, path.size()) == path) {
      safe = false;
    }
  }
  const std::string line(text.substr(begin, end - begin));
  found->ways_out.push_back(
      {"move it behind its target", safe, {{{begin, end + 1}, ""}, {{place, place}, "\n" + line}}});
}

}  // namespace confgrove
