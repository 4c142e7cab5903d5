// The token reader.
#include "front/load.h"
#include "parser/char_class.h"
#include "parser/conf_parser.h"

namespace confgrove {
namespace {

std::string_view Between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

TokenKind ConfParser::NextToken() {
  previous_token = token;
  token = ReadToken();
  return token;
}

// NextToken for " =", which most names have behind them. False if something else comes next.
bool ConfParser::TakeAssign() {
  if (at[0] != ' ' || at[1] != '=') return false;
  at += 2;
  previous_token = token;
  token = TokenAssign;
  return true;
}

TokenKind ConfParser::ReadToken() {
  for (;;) {
    while (*at == '\t' || *at == ' ') ++at;
    const char c = *at;
    switch (Look(Classes.lead, c)) {
      case Lead::Blank: ++at; break;
      case Lead::LineEnd:
        if (at == end) return TokenEnd;
        ++at;
        CountLineEnd();
        break;
      case Lead::Slash:
        if (!SkipSlash()) return TokenEnd;
        break;
      case Lead::Quote: return ReadString();
      case Lead::Comment: return ReadComment();
      case Lead::Single: ++at; return static_cast<TokenKind>(c);
      case Lead::Number: return ReadNumber();
      case Lead::Link: return ReadLink();
      case Lead::Name: return ReadName();
      case Lead::Illegal:
        ++at;
        ReportError("illegal char");
        return TokenCloseBody;
    }
  }
}

void ConfParser::CountLineEnd() {
  ++line;
  name_on_line = false;
}

// Skips a block comment, or a slash with the byte behind it. False if the input ends there.
bool ConfParser::SkipSlash() {
  if (++at == end) return false;
  const char second = *at++;
  if (second != '*') {
    if (IsLineEnd(second)) CountLineEnd();
    return true;
  }
  for (; at != end; ++at) {
    if (*at == '\n') ++line;
    if (*at == '*' && at[1] == '/') {
      at += 2;
      return true;
    }
  }
  return false;
}

TokenKind ConfParser::ReadString() {
  const char* begin = ++at;
  while (!Look(Classes.string_end, *at)) ++at;
  if (at == end) return TokenEnd;
  text = Between(begin, at);
  const char last = *at++;
  if (last != '"') {
    ReportError("\" outline");
    CountLineEnd();
  }
  return TokenString;
}

TokenKind ConfParser::ReadComment() {
  const char* begin = ++at;
  while (!Look(Classes.line_end, *at)) ++at;
  if (at == end) return TokenEnd;
  text = Between(begin, at++);
  number = name_on_line ? 1 : 0;
  CountLineEnd();
  return TokenComment;
}

// A name needs a byte behind it: at the end of the input it is lost. The same goes for a link.
TokenKind ConfParser::ReadName() {
  const char* begin = at;
  while (Look(Classes.name_byte, *at) || (*at == '\0' && at != end)) ++at;
  if (at == end) return TokenEnd;
  text = Between(begin, at);
  name_on_line = true;
  return TokenName;
}

TokenKind ConfParser::ReadLink() {
  const char* begin = ++at;
  if (at == end) return TokenEnd;
  if (!IsFirstLetter(*at)) {
    ++at;
    ReportError("illegal char in link definition");
    return TokenLink;
  }
  while (Look(Classes.link_byte, *at) || (*at == '\0' && at != end)) ++at;
  if (at == end) return TokenEnd;
  text = Between(begin, at);
  return TokenLink;
}

}  // namespace confgrove
