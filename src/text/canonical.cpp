// The canonical layout.
#include "text/canonical.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "save/number_text.h"
#include "text/keepsakes.h"
#include "text/section_text.h"
#include "text/spelling.h"
#include "text/value_text.h"

namespace confgrove {
namespace {

class CanonicalWriter {
 public:
  // `file` is null for a tree that no file holds yet.
  CanonicalWriter(const RootSection& root, const FileText* file) : root_(root), file_(file) {
    if (file != nullptr) kept_ = FindKeepsakes(*file);
  }

  std::string Run() {
    Head();
    Siblings({&root_, 0, 0, 0, 0});
    while (!open_.empty()) {
      Block& block = open_.back();
      if (block.done == block.section->child_count()) {
        EndBlock();
        continue;
      }
      const RealSection& child = *block.section->children->at(block.done++);
      const std::int32_t number = block.next;
      if (file_ != nullptr) block.next = file_->NextNumber(number);
      Section(child, number, block.column);
    }
    text_ += kept_.cut_off;
    return std::move(text_);
  }

 private:
  // A block that is being written.
  struct Block {
    const RealSection* section;
    std::int32_t number;  // of the section in the file
    std::int32_t next;    // of the next child
    std::int32_t done;    // children written so far
    std::int32_t column;  // of the inline comments: the length of its longest line
  };

  void Indent() { text_.append(open_.size() - 1, '\t'); }

  void Imports(const std::vector<std::string_view>& names) {
    for (const std::string_view name : names) {
      text_.append("$import \"").append(name).append("\"\n");
    }
  }

  // The root keeps the comment above the last import alone.
  void Head() {
    std::vector<std::string_view> names;
    for (const auto& [name, imported] : root_.imports) {
      if (imported != nullptr) names.push_back(name);
    }
    const std::string comment = CommentLines(root_.comment().view(), "");
    if (names.size() < 2) text_ += comment;
    for (const std::string& line : kept_.head) text_.append(line) += '\n';
    if (names.empty()) {
      if (!text_.empty()) text_ += '\n';  // apart from the comment of the first section
      return;
    }
    text_ += '\n';
    if (names.size() > 1 && !comment.empty()) {
      const std::string_view last = names.back();
      names.pop_back();
      Imports(names);
      text_ += comment;
      names = {last};
    }
    Imports(names);
    text_ += '\n';
  }

  void Siblings(Block block) {
    block.next = block.number + 1;
    std::int32_t number = block.next;
    for (std::int32_t i = 0; i < block.section->child_count(); ++i) {
      const RealSection& child = *block.section->children->at(i);
      block.column = std::max(block.column, Spell(child, number).width);
      if (file_ != nullptr) number = file_->NextNumber(number);
    }
    open_.push_back(block);
  }

  Spelling Spell(const RealSection& section, std::int32_t number) const {
    return file_ != nullptr ? SpellingIn(*file_, number) : SpellingOf(section);
  }

  void Keepsake(const std::string& line) {
    Indent();
    text_.append(line) += '\n';
  }

  void Section(const RealSection& section, std::int32_t number, std::int32_t column) {
    const auto above = kept_.above.find(number);
    const bool keeps = file_ != nullptr && above != kept_.above.end();
    if (after_section_ && (keeps || !section.comment().empty())) text_ += '\n';
    if (keeps) {
      for (const std::string& line : above->second) Keepsake(line);
    }
    const std::string indent(open_.size() - 1, '\t');
    text_ += CommentLines(section.comment().view(), indent);
    const Spelling spelling = Spell(section, number);
    text_.append(indent).append(section.name()).append(spelling.text);
    if (!section.inline_comment().empty()) {
      text_.append(static_cast<std::size_t>(column - spelling.width) + 1, ' ');
      text_.append("#").append(section.inline_comment().view());
    }
    text_ += '\n';
    after_section_ = true;
    const bool has_braces = file_ != nullptr && !file_->At(number).open.empty();
    if (section.child_count() == 0 && section.type != SectionType::None && !has_braces) return;
    text_.append(indent).append("{\n");
    after_section_ = false;
    Siblings({&section, number, 0, 0, 0});
  }

  void EndBlock() {
    const auto kept = kept_.at_end_of.find(open_.back().number);
    if (file_ != nullptr && kept != kept_.at_end_of.end()) {
      if (after_section_) text_ += '\n';
      for (const std::string& line : kept->second) Keepsake(line);
    }
    open_.pop_back();
    if (open_.empty()) return;
    Indent();
    text_ += "}\n";
    after_section_ = true;
  }

  const RootSection& root_;
  const FileText* file_;
  Keepsakes kept_;
  std::vector<Block> open_;
  bool after_section_ = false;
  std::string text_;
};

}  // namespace

std::string CanonicalText(const RootSection& root) { return CanonicalWriter(root, nullptr).Run(); }

std::string CanonicalText(const FileText& file) {
  return CanonicalWriter(*file.root(), &file).Run();
}

}  // namespace confgrove
