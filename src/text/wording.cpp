// Findings in plain words.
#include <array>

#include "text/lines.h"
#include "text/survey.h"

namespace confgrove {
namespace {

// In the order of the enumeration; "" where the words depend on the place.
constexpr std::array Sentences = {
    "",                                                                       // TwoNames
    "",                                                                       // Redefinition
    "",                                                                       // BadName
    "",                                                                       // NameWithoutValue
    "no name stands right in front of this '='",                              // StrayEquals
    "",                                                                       // StrayValue
    "nothing is open here that it could close",                               // StrayBrace
    "a '{' without a name is ignored, and its '}' closes the block around",   // NamelessBlock
    "a '}' is missing",                                                       // UnclosedBlock
    "",                                                                       // IllegalByte
    "",                                                                       // ByteOrderMark
    "blocks can be nested 1000 deep; the rest isn't read",                    // NestingTooDeep
    "",                                                                       // NoValue
    "the text has no closing quote on its line",                              // UnclosedText
    "this array is never closed",                                             // UnclosedArray
    "an array holds numbers and commas, nothing else",                        // ArrayElement
    "there is no such section",                                               // UndefinedLink
    "behind '@' comes the path of a section",                                 // BadLink
    "",                                                                       // BadNumber
    "'$import \"file\"' is the only directive",                               // BadDirective
    "the name of the file stands in double quotes",                           // ImportName
    "",                                                                       // ImportAgain
    "",                                                                       // ImportFailed
    "a chain of imports can be 100 files long",                               // ImportsTooDeep
    "the file can't be opened",                                               // Unreadable
    "the number is 0; if that is meant, write '0'",                           // ZeroNumber
    "there is nothing behind the last comma",                                 // TrailingComma
    "there are no empty arrays: this is the number 0",                        // EmptyArray
    "a comment between a name and its '{' goes to the first section inside",  // CommentBeforeBrace
    "the comment in front of this '}' belongs to no section and is dropped",  // CommentBeforeEnd
    "there is nothing in this block",                                         // EmptyBlock
    "an import inside of a block counts for the whole file",                  // NestedImport
    "this comment has no '*/', and takes the rest of the file",               // UnclosedComment
    "",                                                                       // Slash
    "",                                                                       // NulByte
    "",                                                                       // CutOff
    "a section has one comment behind it: this one is lost",                  // CommentReplaced
    ""};                                                                      // NumberRunsOn
static_assert(Sentences.size() == static_cast<std::size_t>(Code::NumberRunsOn) + 1);

std::string OfStrayValue(std::string_view token) {
  switch (token.empty() ? '\0' : token.front()) {
    case ',': return "a ',' outside of an array";
    case ']': return "a ']' without a '['";
    case '[': return "an array that is the value of no setting";
    case '@': return "a link that is the value of no setting";
    case '"': return "a text that is the value of no setting";
    default: return "a number that is the value of no setting";
  }
}

std::string OfIllegalByte(std::string_view token) {
  switch (token.front()) {
    case ';': return "a ';' has no meaning: settings need nothing between them";
    case ':': return "a ':' has no meaning: '=' stands between a name and its value";
    case '\'': return "texts stand in double quotes";
    case '*': return "a '*' has no meaning here: comments stand between '/*' and '*/'";
    default: break;
  }
  constexpr std::string_view Digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(token.front());
  if (byte > 0x20 && byte < 0x7F) return "a " + Quoted(token) + " has no meaning here";
  return std::string("the byte 0x") + Digits[byte / 16U] + Digits[byte % 16U] +
         " belongs to no name, and texts stand in double quotes";
}

std::string OfNoValue(std::string_view token) {
  if (token == "=") return "nothing stands behind this '='";
  if (token.empty()) return "the value is missing";
  switch (token.front()) {
    case '#': return "a comment stands where the value should be";
    case '$': return "a directive stands where the value should be";
    case '{':
    case '}': return "a " + Quoted(token) + " stands where the value should be";
    default: return Quoted(token) + " is no value: a text stands in double quotes";
  }
}

std::string OfSlash(std::string_view token) {
  if (token == "//") {
    return "a comment begins with '#': '//' is passed over, and what stands behind it is read";
  }
  return "a '/' is passed over together with the byte behind it";
}

std::string OfCutOff(std::string_view token) {
  switch (token.front()) {
    case '#': return "a comment without a line end behind it is lost";
    case '"': return "a text without a closing quote is lost";
    case '@': return "a link without a line end behind it is lost";
    default: return "a name without a line end behind it is lost";
  }
}

std::string OfNumberRunsOn(std::string_view token, std::size_t digits) {
  return "a number runs into a name: " + Quoted(token) + " is read as the number " +
         std::string(token.substr(0, digits)) + " and the name " + Quoted(token.substr(digits));
}

std::string OfBadName(std::string_view word) {
  return Quoted(word) + (word.find('.') != std::string_view::npos
                             ? " is a path: a section stands in the block of the one above it"
                             : " is no name: names hold letters, digits and '_'");
}

}  // namespace

void PutInWords(const Survey& survey, Finding* found) {
  const std::string_view token = found->span.In(survey.text());
  const auto words = [&]() -> std::string {
    switch (found->code) {
      case Code::TwoNames: return Quoted(token) + " stands right behind another name";
      case Code::Redefinition: return Quoted(token) + " stands twice in this block";
      case Code::BadName: return OfBadName(token);
      case Code::NameWithoutValue: return Quoted(token) + " has neither a value nor a block";
      case Code::StrayValue: return OfStrayValue(token);
      case Code::IllegalByte: return OfIllegalByte(token);
      case Code::ByteOrderMark:
        return token.size() == 2 ? "this file is UTF-16; it has to be UTF-8 or CP1251"
                                 : "a file begins without a byte order mark";
      case Code::NoValue: return OfNoValue(token);
      case Code::BadNumber: return Quoted(token) + " is no number";
      case Code::Slash: return OfSlash(token);
      case Code::NulByte: return "a NUL byte: this isn't a text file, or was damaged";
      case Code::CutOff: return OfCutOff(token);
      case Code::NumberRunsOn:
        return OfNumberRunsOn(token, survey.PieceFrom(found->span.begin)->end - found->span.begin);
      default: return Sentences[static_cast<std::size_t>(found->code)];
    }
  };
  found->text = words();
}

}  // namespace confgrove
