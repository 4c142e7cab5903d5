// The edits behind the value of a section: its inline comment, and a body where there was none.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "lexer/char_class.h"
#include "text/editing.h"
#include "text/section_text.h"
#include "text/value_text.h"

namespace confgrove {
namespace {

// What is to be done about the inline comment of a section.
struct CommentPlan {
  CommentPlan(const FileText& file, const SectionText& here, const RealSection& section,
              const Editing& editing) {
    const bool wanted = !section.inline_comment().empty();
    const auto& all = editing.remedies.displaced;
    displaced = wanted && here.inline_comment.begin > here.open.begin &&
                std::find(all.begin(), all.end(), &section) != all.end();
    is_new = displaced || (wanted && here.inline_comment.empty());
    const Span all_of_it{here.name.begin, here.End()};
    const bool body_on_line = !here.open.empty() && !displaced &&
                              !HasLineEnd(file.Bytes(all_of_it)) && file.EndsLine(all_of_it.end);
    end = body_on_line ? all_of_it.end : here.value.empty() ? here.name.end : here.value.end;
    rewrites_value = is_new && !body_on_line && HasLineEnd(file.Bytes({here.name.begin, end}));
  }

  bool displaced;       // it leaves its place behind the body
  bool is_new;          // where it comes to stand, there was none
  bool rewrites_value;  // it must stand on the line of the name, and so must the value
  std::size_t end;      // what it comes to stand behind
};

// Changes or removes the comment that is there.
void EditOldComment(const FileText& file, Span old, std::string_view wanted, Splices* splices) {
  if (wanted.empty()) {
    splices->Remove({file.EndBefore(file.PieceFrom(old.begin)), old.end});
  } else {
    splices->Put({old.begin + 1, old.end}, std::string(wanted));
  }
}

// Writes a body with all that is in it, and `comment` in front of it.
void PutBody(const SectionText& here, const RealSection& section, const std::string& comment,
             const std::string& indent, Editing* editing) {
  const FileText& file = editing->file;
  bool fits_on_line = comment.empty();
  for (std::int32_t i = 0; i < section.child_count(); ++i) {
    CheckNew(*section.children->at(i), editing);
    fits_on_line = fits_on_line && FitsOnLine(*section.children->at(i));
  }
  const std::size_t end = here.LineEnd();
  const bool ends_line = file.EndsLine(end);
  if (!ends_line && fits_on_line && !file.CommentFollows(end)) {
    editing->splices.Put({end, end}, ' ' + BodyOnLine(section, editing->style()));
    return;
  }
  const bool own_line =
      !comment.empty() || !here.inline_comment.empty() || !editing->style().brace_on_line;
  editing->splices.Put(
      {end, ends_line && !comment.empty() ? file.LineStop(end) : end},
      comment + (own_line ? '\n' + indent : " ") + BodyLines(section, indent, editing->style()));
}

}  // namespace

bool RewritesValue(std::int32_t number, const RealSection& section, const Editing& editing) {
  const FileText& file = editing.file;
  return CommentPlan(file, file.At(number), section, editing).rewrites_value;
}

void EditTail(std::int32_t number, const RealSection& section, Editing* editing) {
  const FileText& file = editing->file;
  const SectionText here = file.At(number);
  Splices& splices = editing->splices;
  const std::string_view wanted = section.inline_comment().view();
  const bool differs = wanted != here.section->inline_comment().view();
  const bool new_body = here.open.empty() && section.child_count() > 0;
  if (!differs && !new_body && editing->remedies.displaced.empty()) return;
  if (differs) editing->Refuse(section, FaultOfComments(section));
  const CommentPlan plan(file, here, section, *editing);
  if (!here.inline_comment.empty() && (plan.displaced || differs)) {
    EditOldComment(file, here.inline_comment, plan.displaced ? "" : wanted, &splices);
  }
  if (plan.rewrites_value) {
    splices.Put({here.name.end, plan.end}, Assignment(section, editing->style()));
  }
  const std::string indent = IndentOf(file, number);
  const std::string comment = plan.is_new ? " #" + std::string(wanted) : std::string();
  if (new_body) {
    PutBody(here, section, comment, indent, editing);
  } else if (plan.is_new && file.EndsLine(plan.end)) {
    splices.Put({plan.end, file.LineStop(plan.end)}, comment);
  } else if (plan.is_new) {
    splices.Put({plan.end, file.record.pieces[file.PieceFrom(plan.end)].begin},
                comment + '\n' + indent);
  }
}

}  // namespace confgrove
