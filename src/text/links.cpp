// Where a link may have been meant to lead.
#include "text/links.h"

#include <confgrove/values/nearest.h>

#include <algorithm>
#include <utility>

#include "text/lines.h"

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
  if (survey.links().empty()) return;
  targets_.clear();
  end_of_reading_ = EndOfReading(survey, file);
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
  found->cause = CauseInImports(survey, path, *found);
  if (found->cause < 0 && !found->is_read) found->cause = end_of_reading_;
  if (found->cause >= 0 || ++looked_up_ > MostSuggestions) return;
  Suggest(path, found);
}

// The import that failed and could have brought the section.
std::int32_t Links::CauseInImports(const Survey& survey, std::string_view path,
                                   const Finding& found) const {
  for (const std::int32_t import : survey.imports()) {
    const Finding& failed = findings_[static_cast<std::size_t>(import)];
    if (failed.span.begin > found.span.begin) break;
    const std::size_t top = tree_.Find(ImportTree::NameIn(failed.span.In(survey.text())));
    bool leads = top == tree_.size() || !tree_[top].file().found;
    for (std::size_t file = top; file < tree_.size() && !leads; ++file) {
      leads = tree_.IsWithin(file, top) && tree_[file].sections().Find(path) != NoSection;
    }
    if (leads) return import;
  }
  return NoCause;
}

// What ended the reading of a file that has imports behind it, of which nothing is known.
std::int32_t Links::EndOfReading(const Survey& survey, std::size_t file) const {
  const Record& record = survey.file().record;
  const bool has_imports =
      std::any_of(record.pieces.begin(), record.pieces.end(), [&](const Piece& piece) {
        return piece.kind == PieceKind::PassedOver && piece.begin >= record.read_end &&
               survey.text()[piece.begin] == '$';
      });
  if (!has_imports) return NoCause;
  const auto stop = std::find_if(findings_.begin(), findings_.end(), [&](const Finding& found) {
    return found.file == file && found.is_read && found.is_error;
  });
  return stop != findings_.end() ? static_cast<std::int32_t>(stop - findings_.begin()) : NoCause;
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
void Links::Suggest(std::string_view path, Finding* found) {
  if (targets_.empty()) targets_ = TargetsFrom(found->file);
  detail::Nearest nearest(path);
  const Target* same_name = nullptr;
  bool several = false;
  for (const Target& target : targets_) {
    nearest.Take(target.path);
    if (LastName(target.path) != LastName(path)) continue;
    several = same_name != nullptr;
    same_name = &target;
  }
  const auto near = std::find_if(targets_.begin(), targets_.end(), [&](const Target& target) {
    return target.path == nearest.Found();
  });
  const Target* meant = several ? nullptr : same_name;
  if (near != targets_.end()) meant = &*near;
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
