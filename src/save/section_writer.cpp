// The section writer.
#include "save/section_writer.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "base/trace.h"
#include "save/number_text.h"
#include "save/text_buffer.h"
#include "tree/real_section.h"

namespace confgrove {
namespace {

// Whether the last thing written in this process finished a section: a comment then gets a blank
// line above it. Carried over from one save to the next; WriteSection alone writes it.
bool AfterSection = false;

void WriteTabs(std::int32_t depth, TextBuffer* out) {
  constexpr char Few[] = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";  // 16, copied in one go
  constexpr std::int32_t FewCount = sizeof Few - 1;
  if (depth > FewCount) {
    out->AppendRepeated(static_cast<std::size_t>(depth), '\t');
    return;
  }
  char* const at = out->Reserve(FewCount);
  std::memcpy(at, Few, FewCount);
  out->Finish(at + depth);
}

std::int32_t Length(std::string_view text) { return static_cast<std::int32_t>(text.size()); }

// The length that a section's line is taken to have up to the end of its value.
std::int32_t MeasureSection(const RealSection& section) {
  const std::int32_t name_length = Length(section.name());
  switch (section.type) {
    case SectionType::None: return name_length;
    case SectionType::String: return name_length + Length(section.text().view()) + 5;
    case SectionType::Link: return name_length + Length(section.text().view()) + 4;
    case SectionType::Number: break;
  }
  const NumberList numbers = section.numbers();
  std::int32_t width = name_length + (numbers.size() > 1 ? 4 : 2);
  for (const double number : numbers) width += TrimmedLength(number) + 1;
  return width;
}

void WriteNumbers(const NumberList& numbers, TextBuffer* out, SaveWarnings* warnings) {
  out->Append(" = ");
  if (numbers.size() == 0) {
    warnings->Add("empty array detected, setting zero value", "");
    out->Append('0');
    return;
  }
  if (numbers.size() > 1) out->Append('[');
  bool first = true;
  for (const double number : numbers) {
    if (!first) out->Append(',');
    first = false;
    out->Finish(WriteNumber(number, out->Reserve(NumberRoom)));
  }
  if (numbers.size() > 1) out->Append(']');
}

void WriteValue(const RealSection& section, TextBuffer* out, SaveWarnings* warnings) {
  switch (section.type) {
    case SectionType::None: break;
    case SectionType::String:
      out->Append(" = \"");
      out->Append(section.text().view());
      out->Append('"');
      break;
    case SectionType::Link:
      out->Append(" = @");
      out->Append(section.text().view());
      break;
    case SectionType::Number: WriteNumbers(section.numbers(), out, warnings); break;
  }
}

// The column of the inline comments in one block. Measuring is work, and most blocks have none.
class CommentColumn {
 public:
  explicit CommentColumn(const RealSection& parent) : parent_(parent) {}

  // The length of the longest line of the block.
  std::int32_t width() {
    if (width_ < 0) Measure();
    return width_;
  }

 private:
  void Measure() {
    width_ = 0;
    for (const RealSection* child : *parent_.children) {
      width_ = std::max(width_, MeasureSection(*child));
    }
  }

  const RealSection& parent_;
  std::int32_t width_ = -1;  // not measured yet
};

void WriteSection(const RealSection& section, std::int32_t depth, CommentColumn* column,
                  TextBuffer* out, SaveWarnings* warnings) {
  const bool has_block = section.HasBlock();
  if (!has_block && section.type == SectionType::None) {
    warnings->Add("[%s] - trying to save blank section without property. skipped\n",
                  section.name());
    return;
  }
  if (!section.comment().empty()) {
    if (AfterSection) out->Append('\n');
    WriteComment(section.comment().c_str(), depth, out);
  }
  WriteTabs(depth, out);
  out->Append(section.name());
  WriteValue(section, out, warnings);
  if (!section.inline_comment().empty()) {
    const std::int32_t blanks = column->width() - MeasureSection(section) + 1;
    out->AppendRepeated(static_cast<std::size_t>(std::max(blanks, 0)), ' ');
    out->Append('#');
    out->Append(section.inline_comment().view());
  }
  out->Append('\n');
  if (has_block) {
    WriteTabs(depth, out);
    out->Append("{\n");
    AfterSection = false;
    WriteSiblings(section, depth + 1, out, warnings);
    WriteTabs(depth, out);
    out->Append("}\n");
  }
  AfterSection = true;
}

}  // namespace

void SaveWarnings::Add(const char* format, std::string_view name) noexcept {
  try {
    list_.push_back({format, std::string(name)});
  } catch (const std::bad_alloc&) {
    return;
  }
}

void SaveWarnings::Send() const {
  for (const Warning& warning : list_) {
    TraceHandler(LevelWarning, warning.format, warning.name.c_str());
  }
}

void WriteComment(const char* comment, std::int32_t depth, TextBuffer* out) {
  while (const char* line_end = std::strchr(comment, '\n')) {
    WriteTabs(depth, out);
    out->Append('#');
    out->Append({comment, static_cast<std::size_t>(line_end + 1 - comment)});
    comment = line_end + 1;
  }
}

void WriteSiblings(const RealSection& parent, std::int32_t depth, TextBuffer* out,
                   SaveWarnings* warnings) {
  if (parent.children == nullptr) return;
  CommentColumn column(parent);
  for (const RealSection* child : *parent.children) {
    WriteSection(*child, depth, &column, out, warnings);
  }
}

}  // namespace confgrove
