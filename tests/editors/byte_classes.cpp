// Prints the class of each byte of a file to the reader, one letter a byte: those of
// editors/tokens.mjs, and a point for what stands between tokens. A last line without an end is
// taken for a whole one.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "lexer/char_class.h"
#include "lexer/lexer.h"

namespace confgrove {
namespace {

constexpr char Wrong = 'x';

class Classifier : private LexerListener {
 public:
  explicit Classifier(const std::string& text)
      : text_(text), lexer_(text_, nullptr, this), classes_(text.size(), '.') {}

  // Of each byte of the text.
  std::string Classify() {
    while (Next()) {
      if (lexer_.kind == TokenDollar) TakeDirective();
    }
    return classes_;
  }

 private:
  // Reads and marks a token. False at the end of the text.
  bool Next() {
    faulty_ = false;
    if (lexer_.Next() == TokenEnd) return false;
    Mark(faulty_ ? Wrong : LetterOf(lexer_.kind), lexer_.Begin(), lexer_.End());
    return true;
  }

  // The name right behind a '$' counts with it.
  void TakeDirective() {
    const std::size_t begin = lexer_.Begin();
    Mark(Wrong, begin, begin + 1);
    const std::size_t next = text_.find_first_not_of(" \t\f", begin + 1);
    if (next == std::string::npos || text_[next] == '\0' || !IsFirstLetter(text_[next])) return;
    Next();
    Mark(lexer_.bytes == "import" ? 'k' : Wrong, begin, lexer_.End());
  }

  static char LetterOf(TokenKind kind) {
    switch (kind) {
      case TokenName: return 'n';
      case TokenString: return 's';
      case TokenNumber: return 'd';
      case TokenLink: return 'l';
      case TokenComment: return 'c';
      default: return 'p';
    }
  }

  // A line end that a token takes along has no class.
  void Mark(char letter, std::size_t begin, std::size_t end) {
    if (letter == Wrong && end > begin + 1 && text_[begin] == '"' && text_[end - 1] == '\0') --end;
    for (std::size_t i = begin; i < end; ++i) {
      classes_[i] = text_[i] == '\n' || text_[i] == '\r' ? '.' : letter;
    }
  }

  void ReportError(const char*, std::size_t, std::size_t) override { faulty_ = true; }
  void ReportWarning(const char*, std::size_t, std::size_t) override {}
  void PassOver(Passed what, std::size_t begin, std::size_t end) override {
    Mark(what == Passed::Slash || what == Passed::CutOff ? Wrong : 'b', begin, end);
  }

  std::string text_;
  Lexer lexer_;
  std::string classes_;
  bool faulty_ = false;  // the token that is being read
};

// The reader sees each CR LF as one LF: its text, and the letters put back to the bytes of the
// file.
std::string ClassesOf(const std::string& file) {
  std::string text;
  for (std::size_t i = 0; i < file.size(); ++i) {
    if (file[i] != '\r' || i + 1 == file.size() || file[i + 1] != '\n') text += file[i];
  }
  const std::string classes = Classifier(text + '\n').Classify();
  std::string out;
  std::size_t at = 0;
  for (std::size_t i = 0; i < file.size(); ++i) {
    const bool dropped = file[i] == '\r' && i + 1 < file.size() && file[i + 1] == '\n';
    out += dropped ? '.' : classes[at++];
  }
  return out;
}

}  // namespace
}  // namespace confgrove

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ifstream file(argv[1], std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  if (!file) {
    std::fprintf(stderr, "cannot read %s\n", argv[1]);
    return 1;
  }
  std::cout << confgrove::ClassesOf(bytes);
}
