// ConfParser: from the tokens of one file to its tree.
#ifndef CONFGROVE_PARSER_CONF_PARSER_H
#define CONFGROVE_PARSER_CONF_PARSER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lexer/lexer.h"
#include "parser/recorder.h"

namespace confgrove {

class RealSection;
class RootSection;
struct Load;

// Reads one file, all of it, into the tree of a root. Lives for that file only.
class ConfParser final : private LexerListener {
 public:
  // All that is pointed to outlives the parser. `depth` is the file's place in the chain of
  // imports. `record`, null for none, receives where each piece stands.
  // What is read is `input`, with a NUL behind it, and then what a `source` has, null for none.
  ConfParser(std::string_view input, TextSource* source, RootSection* root, std::int32_t depth,
             Load* load, Record* record);
  ConfParser(const ConfParser&) = delete;
  ConfParser& operator=(const ConfParser&) = delete;
  virtual ~ConfParser() = default;

  // Reads all statements. The tree is sound if no error was counted in the load by then.
  void Parse();

 private:
  // A body that is being read. Inner ones stand behind it in `bodies_`.
  struct Body {
    RealSection* section;
    RealSection* last;  // the section made last in it; null: none yet
    bool file_level;
  };

  // Each handler deals with one kind of token and reports its own faults. Those that return a
  // boolean tell whether the body goes on.
  void BeginSection(Body& body);
  void IgnoreName(const char* fault);
  void Assign(Body& body);
  void ParseValue(RealSection* target);
  void ParseArray(RealSection* target);
  void TakeComment(Body& body);
  void EnterBody(Body& body);
  void LeaveBody(const Body& body);
  bool ParseImport(const Body& body);
  bool Import(const std::string& name);

  bool ReadsOn();
  void SkipBody();
  void EndBody();

  // Of the current token, or of what the lexer is reading.
  void Error(const char* message);
  void Warning(const char* message);
  void ReportError(const char* message, std::size_t begin, std::size_t end) override;
  void ReportWarning(const char* message, std::size_t begin, std::size_t end) override;
  void PassOver(Passed what, std::size_t begin, std::size_t end) override;

  Lexer lexer_;
  std::string pending_comment_;  // waits for the next section; each line ends in LF
  std::vector<Body> bodies_;     // open ones, the innermost last
  std::vector<double> array_;    // the numbers of the array that is being read
  RootSection* root_;            // not owned, nor is what follows
  std::int32_t import_depth_;
  Load* load_;
  std::optional<Recorder> recorder_;
};

}  // namespace confgrove

#endif
