// Changes of a text, and how they become edits of a file.
#include "text/splices.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "lexer/char_class.h"
#include "platform/platform.h"

namespace confgrove {
namespace {

// Whether a byte can be one of a name, a number or a link.
bool IsOfWord(char c) {
  return IsLaterLetter(c) || Look(Classes.number_byte, c) || c == '@' || c == '.';
}

// The line ends of a file, where a new line looks for its own.
class LineEnds {
 public:
  explicit LineEnds(const FileText& file) : file_(file) {
    const std::string_view text = file.text;
    if (file.bytes.find('\r') == std::string::npos) return;
    for (std::size_t at = text.find_first_of("\r\n"); at != std::string::npos;
         at = text.find_first_of("\r\n", at + 1)) {
      places_.push_back(at);
    }
  }

  // That of the line before `offset`, or of the first line if there is none.
  std::string_view Before(std::size_t offset) const {
    if (places_.empty()) {
      const bool some = file_.text.find('\n') != std::string::npos;
      return some ? "\n" : Platform::line_end;
    }
    const auto behind = std::lower_bound(places_.begin(), places_.end(), offset);
    const std::size_t place = behind != places_.begin() ? behind[-1] : places_.front();
    const std::size_t on_disk = file_.lines.ToDisk(place);
    const std::size_t size = file_.lines.ToDisk(place + 1) - on_disk;
    return std::string_view(file_.bytes).substr(on_disk, size);
  }

 private:
  const FileText& file_;
  std::vector<std::size_t> places_;  // none if all lines end in LF
};

std::string WithLineEnds(const std::string& text, std::string_view line_end) {
  std::string converted;
  for (const char c : text) {
    if (c == '\n') {
      converted.append(line_end);
    } else {
      converted += c;
    }
  }
  return converted;
}

}  // namespace

void Splices::Put(Span span, std::string text, Rank rank) {
  if (span.empty() && text.empty()) return;
  splices_.push_back({span, std::move(text), rank});
}

std::vector<Span> Splices::Spans() const {
  std::vector<Span> all;
  for (const Splice& splice : splices_) all.push_back(splice.span);
  std::sort(all.begin(), all.end(), [](const Span& a, const Span& b) { return a.begin < b.begin; });
  std::vector<Span> apart;
  for (const Span& span : all) {
    if (apart.empty() || span.begin > apart.back().end) {
      apart.push_back(span);
    } else {
      apart.back().end = std::max(apart.back().end, span.end);
    }
  }
  return apart;
}

// Makes one splice of those that touch or overlap.
void Splices::Join() {
  std::stable_sort(splices_.begin(), splices_.end(), [](const Splice& a, const Splice& b) {
    return std::tie(a.span.begin, a.rank) < std::tie(b.span.begin, b.rank);
  });
  std::vector<Splice> joined;
  for (Splice& next : splices_) {
    if (joined.empty() || next.span.begin > joined.back().span.end) {
      joined.push_back(std::move(next));
      continue;
    }
    joined.back().span.end = std::max(joined.back().span.end, next.span.end);
    joined.back().text += next.text;
  }
  splices_ = std::move(joined);
}

std::vector<Edit> Splices::ToEdits(const FileText& file) && {
  Join();
  const LineEnds line_ends(file);
  std::vector<Edit> edits;
  for (Splice& splice : splices_) {
    const auto [begin, end] = splice.span;
    std::string text = std::move(splice.text);
    const auto word_behind = end < file.text.size() && IsOfWord(file.text[end]);
    const auto word_before = begin > 0 && IsOfWord(file.text[begin - 1]);
    const bool has_text = !text.empty();
    // What goes with the last line takes the line end before it along, which new lines need.
    const bool lacks_line_end = end == file.text.size() && begin < end && has_text &&
                                text.front() != '\n' && IsLineEnd(file.text[begin]);
    if (lacks_line_end) text.insert(0, 1, '\n');
    if (word_behind && (has_text ? IsOfWord(text.back()) : word_before)) text += ' ';
    if (has_text && word_before && IsOfWord(text.front())) text.insert(0, 1, ' ');
    if (text.find('\n') != std::string::npos) text = WithLineEnds(text, line_ends.Before(begin));
    const std::size_t on_disk = file.lines.ToDisk(begin);
    edits.push_back({on_disk, file.lines.ToDisk(end) - on_disk, std::move(text)});
  }
  return edits;
}

std::string Apply(std::string_view text, const std::vector<Edit>& edits) {
  std::string result;
  std::size_t size = text.size();
  for (const Edit& edit : edits) size += edit.text.size();
  result.reserve(size);
  std::size_t done = 0;
  for (const Edit& edit : edits) {
    result.append(text.substr(done, edit.offset - done)).append(edit.text);
    done = edit.offset + edit.length;
  }
  return result.append(text.substr(std::min(done, text.size())));
}

}  // namespace confgrove
