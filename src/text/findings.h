// What is wrong with the files of a load, before it is given out as problems.
#ifndef CONFGROVE_TEXT_FINDINGS_H
#define CONFGROVE_TEXT_FINDINGS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/span.h"

namespace confgrove {

enum class Code : std::uint8_t {
  // Errors of the reader.
  TwoNames,
  Redefinition,
  BadName,
  NameWithoutValue,
  StrayEquals,
  StrayValue,
  StrayBrace,
  NamelessBlock,
  UnclosedBlock,
  IllegalByte,
  ByteOrderMark,
  NestingTooDeep,
  NoValue,
  UnclosedText,
  UnclosedArray,
  ArrayElement,
  UndefinedLink,
  BadLink,
  BadNumber,
  BadDirective,
  ImportName,
  ImportAgain,
  ImportFailed,
  ImportsTooDeep,
  Unreadable,
  // Its warnings.
  ZeroNumber,
  TrailingComma,
  EmptyArray,
  CommentBeforeBrace,
  CommentBeforeEnd,
  EmptyBlock,
  NestedImport,
  // What it is silent about.
  UnclosedComment,
  Slash,
  NulByte,
  CutOff,
  CommentReplaced,
  NumberRunsOn
};

const char* SlugOf(Code code);

// The code of a message of the reader.
Code CodeOf(const char* message);

struct Change {
  Span span;
  std::string text;
};

struct WayOut {
  std::string text;
  bool safe = false;
  std::vector<Change> changes;  // of the file of the finding, in order
};

struct Remark {
  std::size_t file = 0;  // by index in the load
  Span span;
  std::string text;
};

constexpr std::int32_t NoCause = -1;

struct Finding {
  Code code = Code::StrayValue;
  bool is_error = false;
  bool is_read = true;
  std::int32_t cause = NoCause;   // the finding, by index, that this one follows from
  std::int32_t message_line = 0;  // 0 without a message
  const char* message = "";
  std::size_t file = 0;
  Span span;
  std::string text;
  std::vector<Remark> related;
  std::vector<WayOut> ways_out;
};

}  // namespace confgrove

#endif
