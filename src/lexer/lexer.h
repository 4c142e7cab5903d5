// Lexer: from the bytes of a file to tokens.
#ifndef CONFGROVE_LEXER_LEXER_H
#define CONFGROVE_LEXER_LEXER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace confgrove {

class TextSource;

// A token that is one character carries the code of it.
enum TokenKind : std::int32_t {
  TokenEnd = 0,
  TokenName = 1,
  TokenString = 2,
  TokenLink = 3,
  TokenNumber = 4,
  TokenComment = '#',
  TokenDollar = '$',
  TokenComma = ',',
  TokenAssign = '=',
  TokenOpenArray = '[',
  TokenCloseArray = ']',
  TokenOpenBody = '{',
  TokenCloseBody = '}'  // also what an illegal byte gives
};

// What is passed over between two tokens.
enum class Passed : std::uint8_t {
  BlockComment,
  OpenBlockComment,  // without an end: it takes the rest of the input
  Slash,             // with the byte behind it
  CutOff             // a text, link, name or comment that the end of the input cuts off
};

// Hears of what stands between tokens and of what is wrong with them, while a token is being read.
// Places are offsets in the input.
class LexerListener {
 public:
  virtual void ReportError(const char* message, std::size_t begin, std::size_t end) = 0;
  virtual void ReportWarning(const char* message, std::size_t begin, std::size_t end) = 0;
  virtual void PassOver(Passed what, std::size_t begin, std::size_t end) = 0;

 protected:
  ~LexerListener() = default;
};

// Reads the tokens of one file, one after the other. Knows letters, numbers and line ends, no
// sections.
class Lexer {
 public:
  // A NUL stands behind `input`. More may come from a `source`; null if that is all. All that is
  // pointed to outlives the lexer.
  Lexer(std::string_view input, TextSource* source, LexerListener* listener)
      : piece_begin_(input.data()),
        at_(input.data()),
        end_(input.data() + input.size()),
        source_(source),
        listener_(listener) {}

  // Reads the next token and gives its kind.
  TokenKind Next() {
    previous_kind = kind;
    kind = Read();
    return kind;
  }

  // Next for " =", which most names have behind them. False if something else comes next.
  bool TakeAssign() {
    if (at_[0] != ' ' || at_[1] != '=') return false;
    at_ += 2;
    previous_kind = kind;
    kind = TokenAssign;
    return true;
  }

  // Next for a "," without a blank in front. False if something else comes next.
  bool TakeComma() {
    if (*at_ != ',') return false;
    ++at_;
    previous_kind = kind;
    kind = TokenComma;
    return true;
  }

  // Where the current token begins and ends in the input. A byte that an error drops belongs to it;
  // the line end behind a comment doesn't.
  std::size_t Begin() const;
  std::size_t End() const;

  // Whether the current token, a '}', is an illegal byte.
  bool IsIllegal() const { return at_[-1] != '}'; }

  // The current token, and the one before it, comments included.
  TokenKind kind = TokenCloseBody;  // so that the first token of a file follows a '}'
  TokenKind previous_kind = TokenCloseBody;
  double number = 0;            // of a number
  bool inline_comment = false;  // of a comment: a name stands on its line
  std::string_view bytes;       // in the input; of the last token that has any, without its marks

  std::int32_t line = 1;  // the current one, counted from 1

 private:
  TokenKind Read();
  TokenKind ReadString();
  TokenKind ReadComment();
  TokenKind ReadName();
  TokenKind ReadLink();
  TokenKind ReadNumber();  // number.cpp, with the two that follow
  TokenKind ReadUnusualNumber();
  void WarnOfZero();
  TokenKind CutOff(const char* begin);
  void ReportError(const char* message, const char* begin);
  bool SkipSlash();
  void CountLineEnd();
  bool TakePiece();

  std::size_t Offset(const char* place) const {
    return piece_offset_ + static_cast<std::size_t>(place - piece_begin_);
  }

  // Where we stand. The byte at `end_` is NUL, which stops every search. Behind the last piece
  // alone is there no line end in front of it.
  const char* piece_begin_;
  const char* at_;
  const char* end_;
  std::size_t piece_offset_ = 0;  // of the piece, in the input
  TextSource* source_;            // not owned; null: none
  std::string kept_bytes_;        // `bytes` of a piece that is gone
  bool name_on_line_ = false;     // a name was read on this line

  LexerListener* listener_;  // not owned
};

}  // namespace confgrove

#endif
