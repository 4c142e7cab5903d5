// Ways out of what is wrong with a file.
#include <algorithm>
#include <array>
#include <utility>

#include "text/lines.h"
#include "text/survey.h"

namespace confgrove {
namespace {

bool IsBehind(const Survey& survey, std::size_t place, PieceKind kind) {
  const Piece* before = survey.PieceBefore(place);
  return before != nullptr && before->kind == kind;
}

// What somebody may have meant as a text: the rest of the line, or its first word if there are
// settings behind that.
Span BareText(std::string_view text, std::size_t begin) {
  text = text.substr(0, LineEnd(text, begin));
  std::size_t end = std::min(text.find_first_of("#{};\"", begin), text.size());
  if (text.substr(begin, end - begin).find('=') != std::string_view::npos) {
    end = std::min(text.find_first_of(" \t", begin), end);
  }
  while (end > begin && IsBlank(text[end - 1])) --end;
  return {begin, end};
}

void AddFix(Finding* found, std::string text, bool safe, std::vector<Change> changes) {
  found->ways_out.push_back({std::move(text), safe, std::move(changes)});
}

void Quote(const Survey& survey, std::size_t begin, bool safe, Finding* found) {
  const Span word = BareText(survey.text(), begin);
  if (word.end == word.begin) return;
  const std::size_t behind = SkipBlanks(survey.text(), word.end);
  const bool whole = IsLastOnLine(survey.text(), word.end) || survey.text()[behind] == '#';
  AddFix(found, "put it in quotes, if it is a text", safe && whole,
         {{word, '"' + std::string(word.In(survey.text())) + '"'}});
}

// A word where a value should be. Yes and no are numbers, and may be meant so.
void FixNoValue(const Survey& survey, Finding* found) {
  const std::string_view token = found->span.In(survey.text());
  if (token.empty() || !(IsFirstLetter(token.front()) || token.front() == '/')) return;
  const std::string_view word = BareText(survey.text(), found->span.begin).In(survey.text());
  constexpr std::array<std::string_view, 6> Yes = {"yes", "true", "on", "Yes", "True", "TRUE"};
  constexpr std::array<std::string_view, 6> No = {"no", "false", "off", "No", "False", "FALSE"};
  const bool yes = std::find(Yes.begin(), Yes.end(), word) != Yes.end();
  const bool no = std::find(No.begin(), No.end(), word) != No.end();
  if (yes || no) {
    AddFix(found, yes ? "write 1 for yes" : "write 0 for no", false,
           {{found->span, yes ? "1" : "0"}});
  }
  Quote(survey, found->span.begin, !yes && !no && IsFirstLetter(token.front()), found);
}

bool IsName(const Survey& survey, const Piece& piece) {
  return piece.kind == PieceKind::Name ||
         (piece.kind == PieceKind::PassedOver && IsFirstLetter(survey.text()[piece.begin]));
}

// Whether a '#' comment from `place` to the end of its line goes to the setting in front of it or
// to the one on the lines behind.
bool CommentFits(const Survey& survey, std::size_t place) {
  const std::string_view text = survey.text();
  const Piece* before = survey.PieceBefore(place);
  if (!IsFirstOnLine(text, place)) {
    if (before == nullptr || before->kind != PieceKind::Value) return false;
    const Piece* name = survey.PieceBefore(before->begin);
    while (name != nullptr && name->kind == PieceKind::Assign) {
      name = survey.PieceBefore(name->begin);
    }
    return name != nullptr && IsName(survey, *name) && name->begin >= LineBegin(text, place);
  }
  if (before != nullptr && (before->kind == PieceKind::Assign || before->kind == PieceKind::Name)) {
    return false;
  }
  const Piece* next = survey.PieceFrom(LineEnd(text, place));
  const bool in_value = next != nullptr && IsBehind(survey, next->begin, PieceKind::Assign);
  return next != nullptr && !in_value && (IsName(survey, *next) || next->kind == PieceKind::Import);
}

void TurnIntoComment(const Survey& survey, std::size_t mark, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t begin = found->span.begin;
  const std::size_t end = LineEnd(text, begin);
  const std::string_view comment = text.substr(begin + mark, end - begin - mark);
  if (CommentFits(survey, begin)) {
    return AddFix(found, "begin the comment with '#'", end < text.size(),
                  {{{begin, begin + mark}, "#"}});
  }
  const bool fits = comment.find("*/") == std::string_view::npos && end - begin < LongestLook;
  AddFix(found, "write it as a comment between '/*' and '*/'", fits,
         {{{begin, begin + mark}, "/*"}, {{end, end}, " */"}});
}

bool BeginsValue(std::string_view text, std::size_t place) {
  const char c = place < text.size() ? text[place] : '\0';
  return IsDigit(c) || c == '"' || c == '[' || c == '-' || c == '.';
}

void FixByte(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t at = found->span.begin;
  if (text[at] == ':' && IsBehind(survey, at, PieceKind::Name)) {
    return AddFix(found, "write '='", BeginsValue(text, SkipBlanks(text, at + 1)),
                  {{found->span, " ="}});
  }
  if (text[at] == ';') {
    if (IsFirstOnLine(text, at)) return TurnIntoComment(survey, 1, found);
    const bool ends =
        IsBehind(survey, at, PieceKind::Value) || IsBehind(survey, at, PieceKind::CloseBody);
    return AddFix(found, "remove the ';'", ends && IsLastOnLine(text, at + 1), {{found->span, ""}});
  }
  if (text[at] == '\'' && IsBehind(survey, at, PieceKind::Assign)) {
    const std::size_t end = LineEnd(text, at);
    const std::size_t other = text.substr(0, end).find('\'', at + 1);
    if (other == std::string_view::npos) return;
    const bool plain = text.substr(at, other - at).find('"') == std::string_view::npos;
    AddFix(found, "use double quotes", plain && IsLastOnLine(text, other + 1),
           {{found->span, "\""}, {{other, other + 1}, "\""}});
  }
}

void FixNumber(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t begin = found->span.begin;
  if (text.substr(begin, 2) == "--" && IsFirstOnLine(text, begin)) {
    return TurnIntoComment(survey, 2, found);
  }
  if (IsBehind(survey, begin, PieceKind::Assign)) Quote(survey, begin, false, found);
}

void FixStrayValue(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t at = found->span.begin;
  const Piece* before = survey.PieceBefore(at);
  if (before == nullptr) return;
  const std::string_view value = text.substr(before->begin, before->end - before->begin);
  if (before->kind == PieceKind::Name && text[at] != ',' && text[at] != ']') {
    return AddFix(found, "put a '=' in front of it", BeginsValue(text, at) && text[at] != '[',
                  {{{at, at}, "= "}});
  }
  if (text[at] == ']' || before->kind != PieceKind::Value || value.empty() ||
      !IsDigit(value.back()))
    return;
  const std::size_t digits = at + 1;
  std::size_t end = digits;
  while (end < text.size() && IsDigit(text[end])) ++end;
  if (text[at] == ',' && before->end == at && end > digits && !IsLaterLetter(text[end])) {
    AddFix(found, "write a point in the number", false, {{found->span, "."}});
  }
  const Span rest = BareText(text, before->begin);
  if (rest.end <= at) return;  // the value ends on a line above
  constexpr std::string_view Numbers = "0123456789.+-eEdD, \t";
  if (rest.In(text).find_first_not_of(Numbers) == std::string_view::npos) {
    AddFix(found, "make it an array", false,
           {{{before->begin, before->begin}, "["}, {{rest.end, rest.end}, "]"}});
  }
  Quote(survey, before->begin, false, found);
}

// A word behind the name that it is meant for.
void FixTwoNames(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const Piece* before = survey.PieceBefore(found->span.begin);
  const bool meant = before != nullptr && before->kind == PieceKind::Name &&
                     IsLastOnLine(text, found->span.end) &&
                     LineBegin(text, before->begin) == LineBegin(text, found->span.begin);
  if (!meant) return;
  AddFix(found, "put a '=' in front of it, and quotes around it", false,
         {{found->span, "= \"" + std::string(found->span.In(text)) + '"'}});
}

void FixComma(const Survey& survey, Finding* found) {
  std::vector<Change> changes;
  std::size_t at = found->span.begin;  // of the ']'
  const std::string_view text = survey.text();
  while (at > 0 && (IsBlank(text[at - 1]) || IsLineEnd(text[at - 1]) || text[at - 1] == ',')) {
    --at;
    if (text[at] == ',') changes.insert(changes.begin(), {{at, at + 1}, ""});
  }
  if (!changes.empty()) AddFix(found, "remove it", true, std::move(changes));
}

void FixUnclosedText(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  Span word = {found->span.begin, found->span.end};
  if (word.end > word.begin && IsLineEnd(text[word.end - 1])) --word.end;
  word.end = std::min(word.end, text.substr(0, word.end).find('#', word.begin));
  while (word.end > word.begin + 1 && IsBlank(text[word.end - 1])) --word.end;
  const bool plain = word.In(text).find_first_of("#{},]") == std::string_view::npos &&
                     IsLastOnLine(text, word.end);
  AddFix(found, "close the text",
         found->text.empty() && plain && IsBehind(survey, word.begin, PieceKind::Assign),
         {{{word.end, word.end}, "\""}});
}

void FixCutOff(const Survey& survey, Finding* found) {
  const std::string_view token = found->span.In(survey.text());
  const std::size_t end = survey.text().size();
  const bool is_value = IsBehind(survey, found->span.begin, PieceKind::Assign);
  if (token.front() == '"') {
    AddFix(found, "close the text", false, {{{end, end}, "\"\n"}});
  } else if (is_value && token.front() != '@' && token.front() != '#') {
    FixNoValue(survey, found);
  } else {
    const bool leads = token.front() == '@' && survey.sections().Find(token.substr(1)) != NoSection;
    AddFix(found, "end the file with a line end", leads || token.front() == '#',
           {{{end, end}, "\n"}});
  }
}

// A '#' comment in an array, or what else may be meant there.
void FixElement(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  if (text[found->span.begin] != '#') return;
  const std::size_t end = LineEnd(text, found->span.begin);
  const Span inside = {found->span.begin + 1, end};
  AddFix(found, "write it as a comment between '/*' and '*/'",
         inside.In(text).find("*/") == std::string_view::npos && end < text.size(),
         {{{found->span.begin, inside.begin}, "/*"}, {{end, end}, " */"}});
}

void FixImport(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const Piece* before = survey.PieceBefore(found->span.end);
  if (found->code == Code::ImportName && IsFirstLetter(text[found->span.begin])) {
    Quote(survey, found->span.begin, false, found);
  } else if (found->code == Code::BadDirective && before != nullptr &&
             IsFirstLetter(text[found->span.begin])) {
    AddFix(found, "write '$import'", false, {{found->span, "import"}});
  }
}

// Closes a block in front of the first line that is indented no deeper than the line of its '{', if
// there is one: a name, or the '}' that was meant for the block around.
void CloseBlock(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t end = found->span.begin;
  const std::size_t brace = found->related.empty() ? end : found->related.front().span.begin;
  const std::size_t indent = IndentAt(text, brace);
  const auto stands_out = [&](const Piece& piece) {
    const bool is_name = piece.kind == PieceKind::Name && IndentAt(text, piece.begin) <= indent;
    const bool is_brace =
        piece.kind == PieceKind::CloseBody && IndentAt(text, piece.begin) < indent;
    return (is_name || is_brace) && IsFirstOnLine(text, piece.begin);
  };
  const auto& pieces = survey.file().record.pieces;
  const auto first = std::find_if(pieces.begin(), pieces.end(), [&](const Piece& piece) {
    return piece.begin > brace && stands_out(piece);
  });
  if (first == pieces.end()) {
    return AddFix(found, "add a '}' at the end", false, {{{end, end}, "\n}\n"}});
  }
  // Comments above it stay with it.
  auto before = first;
  while (IsComment(before[-1]) || before[-1].kind == PieceKind::BlockComment) --before;
  const std::size_t place = LineEnd(text, before[-1].end);
  const std::size_t begin = LineBegin(text, brace);
  const std::size_t indented = SkipBlanks(text, begin);
  std::string line = "\n" + std::string(text.substr(begin, indented - begin)) + '}';
  AddFix(found, "add a '}' above line " + std::to_string(survey.LineOf(first->begin)), false,
         {{{place, place}, std::move(line)}});
}

void AddForBlocks(const Survey& survey, Finding* found) {
  const std::string_view text = survey.text();
  const std::size_t at = found->span.begin;
  switch (found->code) {
    case Code::StrayBrace: return AddFix(found, "remove the '}'", false, {{{at, at + 1}, ""}});
    case Code::UnclosedBlock: return CloseBlock(survey, found);
    case Code::UnclosedArray: {
      const std::size_t end = LineEnd(text, at);
      const std::size_t comment = text.substr(0, end).find('#', at);
      return AddFix(found, "close the array at the end of its line", false,
                    {{{std::min(comment, end), std::min(comment, end)}, "]"}});
    }
    case Code::UnclosedComment: {
      const std::size_t end = LineEnd(text, at);
      return AddFix(found, "close the comment at the end of its line", false,
                    {{{end, end}, " */"}});
    }
    case Code::StrayEquals:
      if (at > 0 && text[at - 1] == '=') {
        AddFix(found, "remove one '='", BeginsValue(text, SkipBlanks(text, at + 1)),
               {{found->span, ""}});
      }
      return;
    default: return;
  }
}

}  // namespace

void AddWaysOut(const Survey& survey, Finding* found) {
  const std::size_t begin = found->span.begin;
  switch (found->code) {
    case Code::NoValue: return FixNoValue(survey, found);
    case Code::TwoNames: return FixTwoNames(survey, found);
    case Code::IllegalByte: return FixByte(survey, found);
    case Code::BadNumber: return FixNumber(survey, found);
    case Code::StrayValue: return FixStrayValue(survey, found);
    case Code::TrailingComma: return FixComma(survey, found);
    case Code::UnclosedText: return FixUnclosedText(survey, found);
    case Code::CutOff: return FixCutOff(survey, found);
    case Code::ArrayElement: return FixElement(survey, found);
    case Code::ImportName:
    case Code::BadDirective: return FixImport(survey, found);
    case Code::ZeroNumber: return AddFix(found, "write '0'", true, {{found->span, "0"}});
    case Code::EmptyArray: return AddFix(found, "write the 0", true, {{{begin, begin}, "0"}});
    case Code::NumberRunsOn: return Quote(survey, begin, false, found);
    case Code::Slash:
      if (found->span.In(survey.text()) == "//") return TurnIntoComment(survey, 2, found);
      if (IsBehind(survey, begin, PieceKind::Assign)) Quote(survey, begin, false, found);
      return;
    case Code::ByteOrderMark:
      if (found->span.end == 3) AddFix(found, "remove it", true, {{found->span, ""}});
      return;
    default: return AddForBlocks(survey, found);
  }
}

}  // namespace confgrove
