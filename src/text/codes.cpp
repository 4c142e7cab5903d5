// The codes of findings, and the messages that belong to them.
#include <array>
#include <unordered_map>

#include "text/findings.h"

namespace confgrove {
namespace {

// In the order of the enumeration.
constexpr std::array Slugs = {"two-names",
                              "redefinition",
                              "bad-name",
                              "name-without-value",
                              "stray-equals",
                              "stray-value",
                              "stray-brace",
                              "nameless-block",
                              "unclosed-block",
                              "illegal-byte",
                              "byte-order-mark",
                              "nesting-too-deep",
                              "no-value",
                              "unclosed-text",
                              "unclosed-array",
                              "array-element",
                              "undefined-link",
                              "bad-link",
                              "bad-number",
                              "bad-directive",
                              "import-name",
                              "import-again",
                              "import-failed",
                              "imports-too-deep",
                              "unreadable",
                              "zero-number",
                              "trailing-comma",
                              "empty-array",
                              "comment-before-brace",
                              "comment-before-end",
                              "empty-block",
                              "nested-import",
                              "unclosed-comment",
                              "slash",
                              "nul-byte",
                              "cut-off",
                              "comment-replaced",
                              "number-runs-on"};
static_assert(Slugs.size() == static_cast<std::size_t>(Code::NumberRunsOn) + 1);

}  // namespace

const char* SlugOf(Code code) { return Slugs[static_cast<std::size_t>(code)]; }

Code CodeOf(const char* message) {
  static const std::unordered_map<std::string_view, Code> Codes = {
      {"expected '=' or '{'", Code::TwoNames},
      {"section redefinition", Code::Redefinition},
      {"unexpected '='", Code::StrayEquals},
      {"syntax error", Code::StrayValue},
      {"unexpected '}'", Code::StrayBrace},
      {"unexpected end of file", Code::UnclosedBlock},
      {"illegal char", Code::IllegalByte},
      {"nesting too deep", Code::NestingTooDeep},
      {"expected number or \"string\" (may be array) after '='", Code::NoValue},
      {"\" outline", Code::UnclosedText},
      {"syntax error in array declaration", Code::ArrayElement},
      {"link to undefined section", Code::UndefinedLink},
      {"illegal char in link definition", Code::BadLink},
      {"syntax error after $", Code::BadDirective},
      {"undefined directive after $", Code::BadDirective},
      {"expected \"filename\" after $import directive", Code::ImportName},
      {"recursive $import", Code::ImportAgain},
      {"cannot parse import file", Code::ImportFailed},
      {"imports nested too deep", Code::ImportsTooDeep},
      {"cannot parse number, set to zero", Code::ZeroNumber},
      {"unnecessary comma before ']'", Code::TrailingComma},
      {"empty array declaration, setting zero value", Code::EmptyArray},
      {"comment will be assigned to next section", Code::CommentBeforeBrace},
      {"comment skipped", Code::CommentBeforeEnd},
      {"blank section", Code::EmptyBlock},
      {"$import must be as possible in root section", Code::NestedImport},
  };
  const auto found = Codes.find(message);
  return found != Codes.end() ? found->second : Code::BadNumber;  // of which there are fifteen
}

}  // namespace confgrove
