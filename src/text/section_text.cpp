// The text of sections that a file doesn't have yet.
#include "text/section_text.h"

#include <cstdint>
#include <vector>

#include "text/value_text.h"

namespace confgrove {
namespace {

// A section whose body is being written; `next` of its children are done.
struct Open {
  const RealSection* section;
  std::int32_t next;
};

// Writes one section after the other, without recursion: a tree can be as deep as it likes.
class Lines {
 public:
  Lines(std::string_view indent, const Style& style) : style_(style), indent_(indent) {}

  void Section(const RealSection& section) {
    Begin(section);
    Rest();
  }

  void Body(const RealSection& section) {
    text += "{\n";
    Enter(section);
    Rest();
  }

  std::string text;

 private:
  // All up to the body, which is left open; a section without one is done.
  void Begin(const RealSection& section) {
    text += CommentLines(section.comment().view(), indent_);
    text += indent_;
    text += section.name();
    text += Assignment(section, style_);
    const bool has_comment = !section.inline_comment().empty();
    if (has_comment) text.append(" #").append(section.inline_comment().view());
    const bool has_body = section.child_count() > 0 || section.type == SectionType::None;
    if (!has_body) {
      text += '\n';
      return;
    }
    if (style_.brace_on_line && !has_comment) {
      text += " {\n";
    } else {
      text.append("\n").append(indent_).append("{\n");
    }
    Enter(section);
  }

  void Enter(const RealSection& section) {
    open_.push_back({&section, 0});
    indent_ += style_.step;
  }

  void Rest() {
    while (!open_.empty()) {
      Open& here = open_.back();
      if (here.next < here.section->child_count()) {
        Begin(*here.section->children->at(here.next++));
        continue;
      }
      open_.pop_back();
      indent_.resize(indent_.size() - style_.step.size());
      text.append(indent_).append("}\n");
    }
  }

  const Style& style_;
  std::string indent_;
  std::vector<Open> open_;
};

void BeginOnLine(const RealSection& section, const Style& style, std::string* text,
                 std::vector<Open>* open) {
  text->append(section.name()).append(Assignment(section, style));
  if (section.child_count() == 0 && section.type != SectionType::None) return;
  text->append(" {");
  open->push_back({&section, 0});
}

void RestOnLine(const Style& style, std::string* text, std::vector<Open>* open) {
  while (!open->empty()) {
    Open& here = open->back();
    *text += ' ';
    if (here.next < here.section->child_count()) {
      BeginOnLine(*here.section->children->at(here.next++), style, text, open);
    } else {
      *text += '}';
      open->pop_back();
    }
  }
}

}  // namespace

std::string CommentLines(std::string_view comment, std::string_view indent) {
  std::string lines;
  for (std::size_t end = comment.find('\n'); end != std::string_view::npos;
       end = comment.find('\n')) {
    lines.append(indent).append("#").append(comment.substr(0, end + 1));
    comment.remove_prefix(end + 1);
  }
  return lines;
}

std::string Assignment(const RealSection& section, const Style& style) {
  if (section.type == SectionType::None) return {};
  return style.before_assign + '=' + style.after_assign + ValueText(section, style.comma);
}

std::string SectionLines(const RealSection& section, std::string_view indent, const Style& style) {
  Lines lines(indent, style);
  lines.Section(section);
  return lines.text;
}

std::string BodyLines(const RealSection& section, std::string_view indent, const Style& style) {
  Lines lines(indent, style);
  lines.Body(section);
  lines.text.pop_back();
  return lines.text;
}

bool FitsOnLine(const RealSection& section) {
  std::vector<const RealSection*> left{&section};
  while (!left.empty()) {
    const RealSection& here = *left.back();
    left.pop_back();
    if (!here.comment().empty() || !here.inline_comment().empty()) return false;
    for (std::int32_t i = 0; i < here.child_count(); ++i) left.push_back(here.children->at(i));
  }
  return true;
}

std::string SectionOnLine(const RealSection& section, const Style& style) {
  std::string text;
  std::vector<Open> open;
  BeginOnLine(section, style, &text, &open);
  RestOnLine(style, &text, &open);
  return text;
}

std::string BodyOnLine(const RealSection& section, const Style& style) {
  std::string text = "{";
  std::vector<Open> open{{&section, 0}};
  RestOnLine(style, &text, &open);
  return text;
}

}  // namespace confgrove
