// The edits of one block: sections that go, and sections that come.
#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "lexer/char_class.h"
#include "text/editing.h"
#include "text/match.h"
#include "text/section_text.h"
#include "tree/node.h"

namespace confgrove {
namespace {

bool IsBlankLine(const FileText& file, std::size_t begin) {
  return begin < file.text.size() && IsLineEnd(file.text[file.LineStop(begin)]) &&
         file.LineStop(begin) < file.text.size();
}

// Whether the line that ends right before `begin`, which begins one, is blank. `bound` is the end
// of what stands there at all.
bool BlankLineBefore(const FileText& file, std::size_t begin, std::size_t bound) {
  if (begin <= bound) return false;
  std::size_t at = begin - 1;  // its line end
  while (at > bound && !IsLineEnd(file.text[at - 1])) --at;
  return at > bound || bound == 0;
}

// Takes whole lines out, from the line of the piece `first` to the end of the line in which `end`
// stands. Of the blank lines around them one group stays.
void RemoveLines(std::size_t first, std::size_t end, Editing* editing) {
  const FileText& file = editing->file;
  const std::size_t bound = file.EndBefore(first);
  std::size_t begin = file.LineBegin(first);
  std::size_t stop = file.NextLine(end);
  const bool blank_before = BlankLineBefore(file, begin, bound);
  const bool no_line_end =
      stop == file.text.size() && !(stop > 0 && IsLineEnd(file.text[stop - 1]));
  if (stop == file.text.size()) {
    // The last line takes a line end of those before it along.
    if (begin > bound && (blank_before || no_line_end)) --begin;
    while (blank_before && begin > bound && !IsLineEnd(file.text[begin - 1])) --begin;
  } else if (blank_before) {
    while (IsBlankLine(file, stop)) stop = file.NextLine(stop);
  }
  editing->splices.Remove({begin, stop});
}

// Takes out what stands from the section `first` to the section `last`, all of which are on lines
// that they share, or one section.
void RemoveRun(std::int32_t first, std::int32_t last, Editing* editing) {
  const FileText& file = editing->file;
  const std::size_t name = file.At(first).name_piece;
  const std::size_t end = file.At(last).LineEnd();
  std::size_t comment = file.FirstDirectComment(name);
  if (comment < name && !file.BeginsLine(comment)) {  // behind the '{' of the block, say
    editing->splices.Remove({file.EndBefore(comment), file.record.pieces[comment].end});
    ++comment;
  }
  if (file.BeginsLine(name) && file.EndsLine(end)) {
    RemoveLines(comment, end, editing);
    return;
  }
  if (comment < name) {
    editing->splices.Remove({file.LineBegin(comment), file.LineBegin(name)});
  }
  const std::size_t begin = file.record.pieces[name].begin;
  if (file.BeginsLine(name)) {
    editing->splices.Remove({begin, file.record.pieces[file.PieceFrom(end)].begin});
  } else {
    // A comment on its last line belongs to the next section: not to the one before.
    const Span run{file.EndBefore(name), end};
    const bool keeps_line = HasLineEnd(file.Bytes(run)) && file.CommentFollows(end);
    editing->splices.Put(run, keeps_line ? "\n" : "", Rank::CommentAbove);
  }
}

// New sections, one behind the other.
class NewSections {
 public:
  NewSections(std::int32_t block, Editing* editing)
      : block_(block), editing_(*editing), file_(editing->file) {}

  void Add(const RealSection* section) {
    CheckNew(*section, &editing_);
    sections_.push_back(section);
    fits_on_line_ = fits_on_line_ && FitsOnLine(*section);
  }

  // Puts those added so far behind the section `anchor`, or at the beginning of the block if that
  // is 0; `some_stay` tells whether sections of the block follow there.
  void PutBehind(std::int32_t anchor, bool some_stay);

 private:
  Style StyleHere(std::int32_t anchor) const;
  std::string Lines(const std::string& indent, const Style& style) const;
  std::string OnLine(const Style& style) const;
  void PutAtBegin(const Style& style);
  void PutInFile(const Style& style, bool some_stay);
  void PutBeforeFirst(const Style& style);
  void PutBehindPlace(std::size_t end, const std::string& indent, const Style& style);

  const std::int32_t block_;
  Editing& editing_;
  const FileText& file_;
  std::vector<const RealSection*> sections_;
  bool fits_on_line_ = true;
};

Style NewSections::StyleHere(std::int32_t anchor) const {
  Style style = editing_.style();
  if (block_ != 0) style.brace_on_line = StyleLike(file_, block_, style).brace_on_line;
  if (anchor == 0) return style;
  const std::string comma = style.comma;
  style = StyleLike(file_, anchor, style);
  style.comma = comma;
  return style;
}

std::string NewSections::Lines(const std::string& indent, const Style& style) const {
  std::string text;
  for (const RealSection* section : sections_) text += SectionLines(*section, indent, style);
  return text;
}

std::string NewSections::OnLine(const Style& style) const {
  std::string text;
  for (const RealSection* section : sections_) {
    if (!text.empty()) text += ' ';
    text += SectionOnLine(*section, style);
  }
  return text;
}

void NewSections::PutBehind(std::int32_t anchor, bool some_stay) {
  if (sections_.empty()) return;
  const Style style = StyleHere(anchor);
  if (anchor != 0) {
    const bool own_line = file_.BeginsLine(file_.At(anchor).name_piece);
    PutBehindPlace(file_.At(anchor).LineEnd(),
                   own_line ? IndentOf(file_, anchor) : InnerIndent(file_, block_, style), style);
  } else if (block_ != 0) {
    PutAtBegin(style);
  } else {
    PutInFile(style, some_stay);
  }
  sections_.clear();
  fits_on_line_ = true;
}

// `end` is that of a piece.
void NewSections::PutBehindPlace(std::size_t end, const std::string& indent, const Style& style) {
  Splices& splices = editing_.splices;
  std::size_t line_end = end;
  std::size_t next = file_.PieceFrom(end);
  while (!file_.EndsLine(line_end) && next < file_.record.pieces.size() &&
         file_.record.pieces[next].kind == PieceKind::BlockComment) {
    line_end = file_.record.pieces[next++].end;
  }
  if (file_.EndsLine(line_end)) {
    const std::size_t begin = file_.NextLine(line_end);
    const bool has_line_end = begin > 0 && IsLineEnd(file_.text[begin - 1]);
    if (begin > line_end && has_line_end) {
      splices.Put({begin, begin}, Lines(indent, style), Rank::NewSection);
    } else {  // the last line of the file has no line end, and needs none
      std::string lines = '\n' + Lines(indent, style);
      lines.pop_back();
      splices.Put({begin, begin}, std::move(lines), Rank::NewSection);
    }
  } else if (fits_on_line_ && !file_.CommentFollows(end)) {
    splices.Put({end, end}, ' ' + OnLine(style), Rank::NewSection);
  } else {  // a comment there is that of the next section
    const std::size_t behind = file_.PieceFrom(end);
    const bool closes = file_.record.pieces[behind].kind == PieceKind::CloseBody;
    splices.Put({end, file_.record.pieces[behind].begin},
                '\n' + Lines(indent, style) + (closes ? IndentOf(file_, block_) : indent),
                Rank::NewSection);
  }
}

// Right behind the '{' of a block.
void NewSections::PutAtBegin(const Style& style) {
  Splices& splices = editing_.splices;
  const std::size_t open = file_.At(block_).open.end;
  const std::string indent = InnerIndent(file_, block_, style);
  if (file_.EndsLine(open)) {
    const std::size_t begin = file_.NextLine(open);
    splices.Put({begin, begin}, Lines(indent, style), Rank::NewSection);
    return;
  }
  const Piece& next = file_.record.pieces[file_.PieceFrom(open)];
  const bool closes = next.kind == PieceKind::CloseBody;
  const bool stays_on_line = fits_on_line_ && !file_.CommentFollows(open);
  if (stays_on_line && (closes || next.kind == PieceKind::Name)) {
    const bool no_gap = next.begin == open;
    splices.Put({open, open}, (no_gap ? "" : " ") + OnLine(style) + (no_gap && !closes ? " " : ""),
                Rank::NewSection);
    return;
  }
  splices.Put({open, next.begin},
              '\n' + Lines(indent, style) + (closes ? IndentOf(file_, block_) : indent),
              Rank::NewSection);
}

// On file level, in front of all sections: behind the imports, or behind all that stands in a file
// without sections.
void NewSections::PutInFile(const Style& style, bool some_stay) {
  Splices& splices = editing_.splices;
  if (some_stay && file_.import_count == 0) return PutBeforeFirst(style);
  const std::size_t size = file_.text.size();
  if (file_.import_count > 0) {
    const std::size_t end = file_.record.pieces[file_.last_import].end;
    std::size_t line_end = end;
    const std::size_t next = file_.PieceFrom(end);
    if (next < file_.record.pieces.size() && !file_.EndsLine(end)) {
      line_end = file_.record.pieces[next].end;
    }
    if (!file_.EndsLine(line_end)) line_end = end;
    const std::size_t begin = file_.EndsLine(line_end) ? file_.NextLine(line_end) : line_end;
    const bool on_new_line = begin > line_end && IsLineEnd(file_.text[begin - 1]);
    splices.Put({begin, begin}, (on_new_line ? "\n" : "\n\n") + Lines("", style), Rank::NewSection);
    return;
  }
  std::string lines = Lines("", style);
  if (!file_.record.pieces.empty()) {
    lines.insert(0, size > 0 && IsLineEnd(file_.text[size - 1]) ? "\n" : "\n\n");
  }
  splices.Put({size, size}, std::move(lines), Rank::NewSection);
}

void NewSections::PutBeforeFirst(const Style& style) {
  const std::size_t name = file_.At(file_.FirstChild(0)).name_piece;
  const std::size_t comment = file_.FirstDirectComment(name);
  if (file_.BeginsLine(comment)) {
    const std::size_t begin = file_.LineBegin(comment);
    editing_.splices.Put({begin, begin}, Lines("", style), Rank::NewSection);
  } else {
    const std::size_t begin = file_.record.pieces[name].begin;
    editing_.splices.Put({begin, begin}, '\n' + Lines("", style), Rank::NewSection);
  }
}

// Whether nothing stands from a piece of a section up to its last '}' but what goes with the
// sections in its body.
bool HoldsSectionsAlone(const FileText& file, std::int32_t number, std::size_t piece) {
  const std::size_t close = file.At(number).close.begin;
  for (; file.record.pieces[piece].begin < close; ++piece) {
    switch (file.record.pieces[piece].kind) {
      case PieceKind::Name:
      case PieceKind::Assign:
      case PieceKind::Value:
      case PieceKind::OpenBody:
      case PieceKind::CloseBody:
      case PieceKind::InlineComment: break;
      case PieceKind::CommentAbove: {
        const std::size_t name = file.At(file.record.pieces[piece].section).name_piece;
        if (file.FirstDirectComment(name) > piece) return false;
        break;
      }
      default: return false;
    }
  }
  return true;
}

}  // namespace

void RemoveSections(const Match& match, Editing* editing) {
  const FileText& file = editing->file;
  for (std::size_t i = 0; i < match.removed.size(); ++i) {
    const std::int32_t first = match.removed[i];
    std::int32_t last = first;
    while (i + 1 < match.removed.size() && file.NextSibling(last) == match.removed[i + 1] &&
           !file.BeginsLine(file.At(match.removed[i + 1]).name_piece)) {
      last = match.removed[++i];
    }
    RemoveRun(first, last, editing);
  }
}

void InsertSections(std::int32_t block, const Match& match, Editing* editing) {
  NewSections fresh(block, editing);
  std::int32_t anchor = 0;
  for (const Match::Child& child : match.children) {
    if (child.number == 0) {
      fresh.Add(child.section);
      continue;
    }
    fresh.PutBehind(anchor, true);
    anchor = child.number;
  }
  fresh.PutBehind(anchor, false);
}

void NoteIfEmptied(std::int32_t number, const RealSection& section, Editing* editing) {
  const FileText& file = editing->file;
  if (number == 0 || section.child_count() > 0 || section.type != SectionType::None) return;
  const bool holds_more = !HoldsSectionsAlone(file, number, file.At(number).name_piece + 1);
  editing->emptied.push_back({PathOf(section), holds_more});
}

bool RemoveBody(std::int32_t number, const RealSection& section, Editing* editing) {
  const FileText& file = editing->file;
  const SectionText here = file.At(number);
  if (section.child_count() > 0 || section.type == SectionType::None ||
      file.FirstChild(number) == 0 || here.first_open.begin != here.open.begin ||
      !HoldsSectionsAlone(file, number, here.name_piece + 1)) {
    return false;
  }
  const std::size_t begin = file.EndBefore(file.PieceFrom(here.open.begin));
  const bool behind_comment = begin == here.inline_comment.end && !file.EndsLine(here.close.end);
  const bool keeps_line = behind_comment || file.CommentFollows(here.close.end);
  editing->splices.Put({begin, here.close.end}, keeps_line ? "\n" : "");
  return true;
}

}  // namespace confgrove
