// ConfParser: from the bytes of one file to its tree.
#ifndef CONFGROVE_PARSER_CONF_PARSER_H
#define CONFGROVE_PARSER_CONF_PARSER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove {

class RealSection;
class RootSection;

// A token that is one character carries the code of it.
enum TokenKind : std::int32_t {
  TokenEnd = 0,
  TokenName = 1,
  TokenString = 2,
  TokenLink = 3,
  TokenNumber = 4,
  TokenComment = 35,
  TokenDollar = 36,
  TokenComma = 44,
  TokenAssign = 61,
  TokenOpenArray = 91,
  TokenCloseArray = 93,
  TokenOpenBody = 123,
  TokenCloseBody = 125  // also what an illegal byte gives
};

// Reads one file: bytes -> tokens (NextToken) -> sections (ParseBody). Lives for that file only.
class ConfParser {
 public:
  // `input` and `target` outlive the parser. `depth` is the file's place in the chain of imports.
  ConfParser(const std::string& input, RootSection* target, std::int32_t depth);

  // Reads statements to the end of `body`, and of those in it; null is the file level. Returns
  // ErrorCount, which counts the whole load: 0 is sound so far.
  std::int32_t ParseBody(RealSection* body);

 private:
  // A body that is being read. Inner ones stand behind it in `bodies`.
  struct Body {
    RealSection* section;
    RealSection* last;  // the section made last in it; null: none yet
    bool file_level;
  };

  // tokens.cpp: reading one token, which becomes `token`.
  TokenKind NextToken();
  bool TakeAssign();
  TokenKind ReadToken();
  TokenKind ReadString();
  TokenKind ReadComment();
  TokenKind ReadName();
  TokenKind ReadLink();
  bool SkipSlash();
  void CountLineEnd();

  // number.cpp
  TokenKind ReadNumber();

  // statements.cpp: each handler deals with one kind of token and reports its own faults. Those
  // that return a boolean tell whether the body goes on.
  void BeginSection(Body& body);
  void Assign(Body& body);
  void ParseValue(RealSection* target);
  void ParseArray(RealSection* target);
  void TakeComment(Body& body);
  void EnterBody(Body& body);
  void LeaveBody(const Body& body);
  bool ParseImport(const Body& body);

  std::int32_t ReportError(const char* message);
  void ReportWarning(const char* message);
  std::string Label() const;

  // The current token, and the one before it, comments included.
  TokenKind token = TokenCloseBody;  // so that the first token of a file follows a '}'
  TokenKind previous_token = TokenCloseBody;
  double number = 0;      // of a number; of a comment 1 if it is an inline one, else 0
  std::string_view text;  // into the input: bytes of the last token that has any

  // Where we stand. The byte at `end` is NUL, which stops every search.
  const char* at;
  const char* end;
  std::int32_t line = 1;      // counted from 1
  bool name_on_line = false;  // a name was read on this line

  std::string pending_comment;  // waits for the next section; each line ends in LF
  std::vector<Body> bodies;     // open ones, the innermost last
  std::vector<double> array;    // the numbers of the array that is being read
  RootSection* root;            // not owned
  std::int32_t import_depth;
};

}  // namespace confgrove

#endif
