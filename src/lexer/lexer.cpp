// The tokens other than numbers, and what stands between them.
#include "lexer/lexer.h"

#include <cstring>

#include "base/name_end.h"
#include "base/sixteen_bytes.h"
#include "lexer/char_class.h"
#include "lexer/text_source.h"

namespace confgrove {
namespace {

// The first byte from `at` on that the table has. `answers` tells the same of sixteen bytes.
template <typename Table, typename Answers>
const char* Search(const Table& table, const Answers& answers, const char* at, const char* end) {
  for (; SixteenBytes::Fit(at, end); at += SixteenBytesSize) {
    const ByteBits found = answers(SixteenBytes(at)).bits();
    if (found != 0) return at + LowestBit(found);
  }
  while (!Look(table, *at)) ++at;
  return at;
}

const char* LineEndFrom(const char* at, const char* end) {
  const auto answers = [](SixteenBytes bytes) {
    return bytes.Are('\n') | bytes.Are('\r') | bytes.Are('\0');
  };
  return Search(Classes.line_end, answers, at, end);
}

const char* StringEndFrom(const char* at, const char* end) {
  const auto answers = [](SixteenBytes bytes) {
    return bytes.Are('"') | bytes.Are('\n') | bytes.Are('\r') | bytes.Are('\0');
  };
  return Search(Classes.string_end, answers, at, end);
}

// Deep down in a tree a line is tabs for the most part. They are passed over by eight; what is left
// of them are blanks as others.
const char* BehindTabs(const char* at, const char* end) {
  constexpr std::string_view Tabs = "\t\t\t\t\t\t\t\t";
  constexpr auto size = static_cast<std::ptrdiff_t>(Tabs.size());
  while (end - at > size && std::memcmp(at, Tabs.data(), Tabs.size()) == 0) at += size;
  return at;
}

std::string_view Between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

TokenKind Lexer::Read() {
  for (;;) {
    const char* at = at_;
    while (*at == '\t' || *at == ' ') ++at;
    at_ = at;
    const char c = *at;
    const Lead lead = Look(Classes.lead, c);
    if (lead == Lead::Name) return ReadName();  // two branches for what comes most cost less
    if (lead == Lead::Number) return ReadNumber();
    switch (lead) {
      case Lead::Blank: ++at_; break;
      case Lead::LineEnd:
        if (at_ == end_) {
          if (!TakePiece()) return TokenEnd;
          break;
        }
        ++at_;
        CountLineEnd();
        at_ = BehindTabs(at_, end_);
        break;
      case Lead::Slash:
        if (!SkipSlash()) return TokenEnd;
        break;
      case Lead::Quote: return ReadString();
      case Lead::Comment: return ReadComment();
      case Lead::Single: ++at_; return static_cast<TokenKind>(c);
      case Lead::Link: return ReadLink();
      case Lead::Number:
      case Lead::Name: break;
      case Lead::Illegal:
        ++at_;
        ReportError("illegal char", at_ - 1);
        return TokenCloseBody;
    }
  }
}

// Goes on with the next piece of the input, if there is one. Every token but a block comment ends
// with its line at the latest, and so does every piece but the last: no other token is divided.
bool Lexer::TakePiece() {
  if (source_ == nullptr) return false;
  kept_bytes_ = bytes;
  const std::string_view piece = source_->Next();
  if (piece.empty()) return false;
  bytes = kept_bytes_;
  piece_offset_ = Offset(end_);
  piece_begin_ = at_ = piece.data();
  end_ = at_ + piece.size();
  return true;
}

void Lexer::CountLineEnd() {
  ++line;
  name_on_line_ = false;
}

std::size_t Lexer::Begin() const {
  switch (kind) {
    case TokenEnd: return Offset(at_);
    case TokenName:
    case TokenNumber: return Offset(bytes.data());
    case TokenString:
    case TokenComment: return Offset(bytes.data()) - 1;
    case TokenLink: {
      const bool has_bytes = bytes.data() + bytes.size() == at_;
      return has_bytes ? Offset(bytes.data()) - 1 : Offset(at_) - 2;
    }
    default: return Offset(at_) - 1;
  }
}

std::size_t Lexer::End() const {
  return kind == TokenComment ? Offset(bytes.data()) + bytes.size() : Offset(at_);
}

// What was read since `begin` is at fault.
void Lexer::ReportError(const char* message, const char* begin) {
  listener_->ReportError(message, Offset(begin), Offset(at_));
}

// The input ends in a token, which is lost.
TokenKind Lexer::CutOff(const char* begin) {
  listener_->PassOver(Passed::CutOff, Offset(begin), Offset(end_));
  return TokenEnd;
}

// Skips a block comment, or a slash with the byte behind it. False if the input ends there.
bool Lexer::SkipSlash() {
  const std::size_t begin = Offset(at_);
  const auto pass_over = [this, begin](Passed what) {
    listener_->PassOver(what, begin, Offset(at_));
  };
  if (++at_ == end_) {
    pass_over(Passed::Slash);
    return false;
  }
  const char second = *at_++;
  if (second != '*') {
    if (IsLineEnd(second)) CountLineEnd();
    pass_over(Passed::Slash);
    return true;
  }
  for (; at_ != end_ || TakePiece(); ++at_) {
    if (*at_ == '\n') ++line;
    if (*at_ == '*' && at_[1] == '/') {
      at_ += 2;
      pass_over(Passed::BlockComment);
      return true;
    }
  }
  pass_over(Passed::OpenBlockComment);
  return false;
}

TokenKind Lexer::ReadString() {
  const char* begin = ++at_;
  at_ = StringEndFrom(begin, end_);
  if (at_ == end_) return CutOff(begin - 1);
  bytes = Between(begin, at_);
  const char last = *at_++;
  if (last != '"') {
    ReportError("\" outline", begin - 1);
    CountLineEnd();
  }
  return TokenString;
}

TokenKind Lexer::ReadComment() {
  const char* begin = ++at_;
  at_ = LineEndFrom(begin, end_);
  if (at_ == end_) return CutOff(begin - 1);
  bytes = Between(begin, at_++);
  inline_comment = name_on_line_;
  CountLineEnd();
  return TokenComment;
}

// A name needs a byte behind it: at the end of the input it is lost. The same goes for a link.
TokenKind Lexer::ReadName() {
  const char* begin = at_;
  const std::string_view piece = Between(piece_begin_, end_);
  at_ = BehindName(piece, begin);
  while (*at_ == '\0' && at_ != end_) at_ = BehindName(piece, at_ + 1);
  if (at_ == end_) return CutOff(begin);
  bytes = Between(begin, at_);
  name_on_line_ = true;
  return TokenName;
}

TokenKind Lexer::ReadLink() {
  const char* begin = ++at_;
  if (at_ == end_) return CutOff(begin - 1);
  if (!IsFirstLetter(*at_)) {
    ++at_;
    ReportError("illegal char in link definition", begin - 1);
    return TokenLink;
  }
  while (Look(Classes.link_byte, *at_) || (*at_ == '\0' && at_ != end_)) ++at_;
  if (at_ == end_) return CutOff(begin - 1);
  bytes = Between(begin, at_);
  return TokenLink;
}

}  // namespace confgrove
