// Reading the outline: a walk over the text, byte by byte, by the rules of the reader.
#include "outline.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "text.h"

namespace confgrove::Tool {
namespace {

bool IsLineEnd(char c) { return c == '\n' || c == '\r' || c == '\0'; }
bool StartsName(char c) { return c == '\0' || IsFirstLetter(c); }
bool ContinuesName(char c) { return c == '\0' || IsLaterLetter(c); }
bool ContinuesLink(char c) { return c == '.' || ContinuesName(c); }
bool StartsNumber(char c) { return c == '+' || c == '-' || c == '.' || (c >= '0' && c <= '9'); }
// Any of these inside a number is either part of it or an error.
bool ContinuesNumber(char c) { return StartsNumber(c) || (c | 1) == 'e' || (c | 1) == 'E'; }
bool IsNoQuote(char c) { return c != '"'; }
bool IsAny(char /*c*/) { return true; }

class OutlineReader {
 public:
  explicit OutlineReader(Outline* outline) : outline_(outline), text_(outline->text) {
    outline_->line_starts.push_back(0);
    bodies_.push_back({&outline_->top, false});
  }

  void Read() {
    while (at_ < text_.size()) {
      const char c = text_[at_];
      switch (c) {
        case '/': ReadSlash(); break;
        case '#': ReadComment(); break;
        case '"': ReadString(); break;
        case '@': ReadLink(); break;
        case '$':
          directive_ = DirectiveSign;
          ++at_;
          break;
        case '{':
          OpenBody();
          ++at_;
          break;
        case '}':
          CloseBody();
          ++at_;
          break;
        default: ReadOther(c);
      }
    }
  }

 private:
  // `last` of a body is the section that a value or a body belongs to; at first there is none.
  struct Body {
    Node* section;
    bool has_last;
  };
  enum Directive { DirectiveNone, DirectiveSign, DirectiveName };

  std::int32_t Line() const { return static_cast<std::int32_t>(outline_->line_starts.size()); }

  // Takes bytes from `at_` on as long as `belongs` holds for them.
  std::string_view Take(bool (*belongs)(char)) {
    const std::size_t start = at_;
    while (at_ < text_.size() && belongs(text_[at_])) ++at_;
    return text_.substr(start, at_ - start);
  }
  std::string_view TakeToLineEnd(bool (*belongs)(char)) {
    const std::size_t start = at_;
    while (at_ < text_.size() && !IsLineEnd(text_[at_]) && belongs(text_[at_])) ++at_;
    return text_.substr(start, at_ - start);
  }

  void Skip() {
    if (IsLineEnd(text_[at_++])) outline_->line_starts.push_back(at_);
  }
  void PassOver(std::string_view what) {
    outline_->passed_over.push_back({std::string(what), Line()});
  }

  void ReadSlash() {
    if (text_.substr(at_, 2) == "/*") {
      const std::size_t end = std::min(text_.find("*/", at_ + 2), text_.size() - 2) + 2;
      outline_->block_comments.push_back({std::string(text_.substr(at_, end - at_)), Line()});
      for (; at_ < end; ++at_) {
        if (text_[at_] == '\n') outline_->line_starts.push_back(at_ + 1);
      }
      return;
    }
    PassOver(text_.substr(at_, 2));
    ++at_;
    if (at_ < text_.size()) Skip();
  }

  void ReadComment() {
    ++at_;
    const std::string_view comment = TakeToLineEnd(IsAny);
    outline_->comments.push_back({std::string(comment), Line()});
  }

  void ReadString() {
    const std::size_t start = at_++;
    const std::string_view string = TakeToLineEnd(IsNoQuote);
    if (at_ == text_.size()) return PassOver(text_.substr(start));
    if (directive_ == DirectiveName) outline_->imports.emplace_back(string);
    directive_ = DirectiveNone;
    Skip();
  }

  void ReadLink() {
    const std::size_t start = at_++;
    if (at_ < text_.size() && !StartsName(text_[at_])) {
      ++at_;
      return;
    }
    const std::string_view target = Take(ContinuesLink);
    if (at_ == text_.size()) return PassOver(text_.substr(start));
    if (!bodies_.back().has_last) return;
    Node& section = bodies_.back().section->children.back();
    section.type = SectionType::Link;
    section.text = target;
  }

  void ReadOther(char c) {
    if (StartsNumber(c)) {
      Take(ContinuesNumber);
    } else if (StartsName(c) && c != '\0') {
      ReadName();
    } else {
      Skip();
    }
  }

  void ReadName() {
    const std::string_view name = Take(ContinuesName);
    if (at_ == text_.size()) return PassOver(name);
    if (directive_ == DirectiveSign) {
      directive_ = DirectiveName;
      return;
    }
    bodies_.back().section->children.emplace_back().name = name;
    bodies_.back().has_last = true;
  }

  // A brace without a section before it is ignored, and its partner closes the body around it.
  void OpenBody() {
    if (bodies_.back().has_last) {
      bodies_.push_back({&bodies_.back().section->children.back(), false});
    }
  }
  void CloseBody() {
    if (bodies_.size() > 1) bodies_.pop_back();
  }

  Outline* outline_;
  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<Body> bodies_;  // a body's siblings don't move while it is open
  Directive directive_ = DirectiveNone;
};

}  // namespace

std::string Outline::Line(std::int32_t line) const {
  if (line < 1 || static_cast<std::size_t>(line) > line_starts.size()) return "";
  const std::size_t start = line_starts[static_cast<std::size_t>(line) - 1];
  const std::size_t end =
      std::min(text.find_first_of(std::string_view("\n\r\0", 3), start), text.size());
  return text.substr(start, end - start);
}

Outline ReadOutline(const std::string& file_text) {
  Outline outline;
  outline.text.reserve(file_text.size());
  for (std::size_t i = 0; i < file_text.size(); ++i) {
    const bool joined =
        file_text[i] == '\r' && i + 1 < file_text.size() && file_text[i + 1] == '\n';
    if (!joined) outline.text += file_text[i];
  }
  OutlineReader(&outline).Read();
  return outline;
}

}  // namespace confgrove::Tool
