// What the reader has reported: what it is, and what it follows from.
#include <algorithm>
#include <utility>

#include "text/lines.h"
#include "text/survey.h"

namespace confgrove {
namespace {

bool IsWarning(Code code) { return code >= Code::ZeroNumber; }

// The end of a word as people write it, with dots, dashes and signs.
std::size_t WordEnd(std::string_view text, std::size_t place) {
  text = text.substr(0, place + LongestLook);
  while (place < text.size() &&
         (IsPathLetter(text[place]) || Look(Classes.number_byte, text[place]))) {
    ++place;
  }
  return place;
}

}  // namespace

void Survey::TakeFault(const Fault& fault) {
  Finding found;
  found.code = CodeOf(fault.message);
  found.is_error = fault.is_error;
  found.is_read = fault.is_read;
  found.message = fault.message;
  found.message_line = fault.line;
  found.span = {fault.begin, fault.end};
  found.file = file_index_;
  const bool same_token =
      last_finding_ >= 0 && last_fault_begin_ == fault.begin && found.code != Code::UnclosedBlock;
  if (same_token) {
    found.cause = RootOf(last_finding_);
  } else if (InStretch(fault.begin) && (stretch_.whole || !IsWarning(found.code))) {
    found.cause = stretch_.head;
  } else if (nul_ >= 0 && (text_.substr(fault.begin, fault.end - fault.begin + 1).find('\0') !=
                           std::string_view::npos)) {
    found.cause = nul_;
  }
  Judge(&found);
  findings_.push_back(std::move(found));
  last_finding_ = static_cast<std::int32_t>(findings_.size()) - 1;
  last_fault_begin_ = fault.begin;
  AfterFault(last_finding_);
}

void Survey::Judge(Finding* found) {
  switch (found->code) {
    case Code::TwoNames: return JudgeTwoNames(found);
    case Code::Redefinition: return JudgeRedefinition(found);
    case Code::StrayBrace: return JudgeBrace(found);
    case Code::IllegalByte: return JudgeByte(found);
    case Code::NoValue: return JudgeValue(found);
    case Code::ArrayElement: return JudgeElement(found);
    case Code::UnclosedBlock: return JudgeEnd(found);
    case Code::BadNumber:
      found->span.end = WordEnd(text_, found->span.end);
      return JudgeBadWord(found);
    case Code::StrayValue:
      if (found->cause < 0 && last_token_is_assign_ && last_token_cause_ >= 0) {
        found->cause = RootOf(last_token_cause_);  // the value of a name that was dropped
      }
      return JudgeBadWord(found);
    case Code::UnclosedText: return JudgeText(found);
    case Code::TrailingComma:
    case Code::EmptyArray:
      if (array_finding_ >= 0) found->cause = RootOf(array_finding_);
      return;
    default: break;
  }
}

// What a finding does to what comes behind it.
void Survey::AfterFault(std::int32_t index) {
  const Finding& found = finding(index);
  const std::int32_t root = RootOf(index);
  if (last_token_.begin <= last_fault_begin_ && last_fault_begin_ < last_token_.end) {
    last_token_cause_ = root;
  }
  switch (found.code) {
    case Code::UndefinedLink:
      if (found.cause < 0) links_.push_back(index);
      return;
    case Code::ImportFailed: imports_.push_back(index); return;
    case Code::BadDirective:
    case Code::ImportAgain:
      if (found.is_read && actual_.size() > 1) {  // the body ends for the reader
        actual_.pop_back();
        lost_by_ = root;
      }
      break;
    case Code::UnclosedText: EatBraces(found.span.In(text_), root); break;
    case Code::NoValue:
    case Code::ArrayElement: EatBrace(At(last_fault_begin_), root); break;
    default: break;
  }
  if (IsWarning(found.code) || found.cause >= 0) return;
  const char first = At(found.span.begin);
  const bool comment = (first == ';' || (first == '-' && At(found.span.begin + 1) == '-')) &&
                       IsFirstOnLine(text_, found.span.begin);
  BeginStretch(index, last_fault_begin_, comment);
}

// A name that can't be one has a dot or a dash behind it.
void Survey::JudgeBadWord(Finding* found) {
  const char first = At(found->span.begin);
  const bool glued = last_token_is_name_ && last_token_.end == found->span.begin;
  if (found->cause >= 0 || !glued || (first != '.' && first != '-')) return;
  found->code = Code::BadName;
  found->span = {last_token_.begin, WordEnd(text_, found->span.begin)};
  if (last_token_cause_ >= 0) found->cause = RootOf(last_token_cause_);
}

// A text that runs over two lines has a quote at the end of the second.
void Survey::JudgeText(Finding* found) {
  const std::size_t begin = LineBegin(text_, found->span.begin);
  const std::int32_t before =
      std::exchange(last_text_, static_cast<std::int32_t>(findings_.size()));
  if (found->cause >= 0 || before < 0 || finding(before).span.end != begin) return;
  if (Span{begin, found->span.begin}.In(text_).find('=') != std::string_view::npos) return;
  if (!IsLastOnLine(text_, found->span.begin + 1)) return;
  found->cause = RootOf(before);
  finding(before).text = "a text ends on the line on which it begins";
}

void Survey::JudgeTwoNames(Finding* found) {
  if (found->cause < 0 && last_token_cause_ >= 0) {
    const std::int32_t root = RootOf(last_token_cause_);
    // A row of names on lines of their own is a row of faults.
    const Finding& before = finding(root);
    if (before.code != Code::TwoNames || before.message_line == found->message_line) {
      found->cause = root;
    }
  }
  const auto own = static_cast<std::int32_t>(findings_.size());
  const std::int32_t cause = found->cause >= 0 ? found->cause : own;
  if (found->cause < 0 && LineEnd(text_, last_token_.end) < found->span.begin) {
    found->related.push_back({file_index_, last_token_, "this one has neither value nor block"});
  }
  meant_.back().last =
      sections_.Add(meant_.back().section, found->span.In(text_), found->span, cause);
  found_.Add(NoSection, found->span.In(text_), found->span, cause);
  last_name_ = meant_.back().last;
}

void Survey::JudgeRedefinition(Finding* found) {
  const std::string_view name = found->span.In(text_);
  const Span span = found->span;
  const std::int32_t first = found_.FindChild(actual_.back(), name);
  const std::int32_t meant = sections_.FindChild(meant_.back().section, name);
  if (found->cause < 0 && first != NoSection && sections_[first].cause >= 0) {
    found->cause = RootOf(sections_[first].cause);
  } else if (found->cause < 0 && meant == NoSection) {
    found->cause = RootOf(LostBy());
  }
  if (At(span.end) == '.' || At(span.end) == '-') {
    found->code = Code::BadName;
    found->span.end = WordEnd(text_, span.end);
  } else if (found->cause < 0 && meant != NoSection) {
    found->related.push_back({file_index_, sections_[meant].span, "the first one stands here"});
  }
  const auto own = static_cast<std::int32_t>(findings_.size());
  last_token_cause_ = found->cause >= 0 ? found->cause : own;
  last_name_ = NoSection;
  meant_.back().last = meant;
  if (meant != NoSection) return;
  meant_.back().last = sections_.Add(meant_.back().section, name, span, last_token_cause_);
  found_.Add(NoSection, name, span, last_token_cause_);
}

// Too many closing braces, or a name in front of one.
void Survey::JudgeBrace(Finding* found) {
  if (found->cause >= 0) return;
  const bool stray = actual_.size() == 1;
  if (last_token_is_name_ && (!stray || meant_.size() > 1)) {
    if (last_token_cause_ >= 0) found->cause = RootOf(last_token_cause_);
    if (stray && found->cause < 0) found->cause = RootOf(lost_by_);
    if (found->cause < 0) {
      found->code = Code::NameWithoutValue;
      found->span = last_token_;
    }
    return;
  }
  if (meant_.size() > 1 && lost_by_ >= 0) {
    found->cause = RootOf(lost_by_);
  } else if (odd_pair_.end > 0) {
    ShowOddPair(found);
  }
}

// Where the indentation tells that a brace is missing or is one too many.
void Survey::ShowOddPair(Finding* found) const {
  const Span& odd = odd_pair_;
  found->related.push_back({file_index_, {odd.begin, odd.begin + 1}, "opened here"});
  found->related.push_back(
      {file_index_, {odd.end, odd.end + 1}, "closed here, where the indentation is another"});
}

void Survey::JudgeByte(Finding* found) {
  if (text_.substr(0, 3) == "\xEF\xBB\xBF" && found->span.begin < 3) {
    found->code = Code::ByteOrderMark;
    found->span = {0, 3};
    found->cause = found->is_read ? NoCause : 0;
  }
}

void Survey::JudgeValue(Finding* found) {
  if (found->cause >= 0) return;
  if (IsLineEnd(At(found->span.begin)) || found->span.begin >= text_.size() ||
      LineEnd(text_, last_assign_.end) < found->span.begin) {
    found->span = last_assign_;  // nothing stands behind it
  } else if (At(found->span.begin) == '=') {
    found->code = Code::StrayEquals;
  } else if (IsFirstLetter(At(found->span.begin))) {
    const auto ends = [](char c) {
      return IsBlank(c) || IsLineEnd(c) ||
             std::string_view("#;,\"[]{}=").find(c) != std::string_view::npos;
    };
    const std::size_t most = found->span.end + LongestLook;
    while (found->span.end < most && !ends(At(found->span.end))) ++found->span.end;
  }
}

// One finding for an array, and none for its end if that is missing.
void Survey::JudgeElement(Finding* found) {
  if (array_finding_ >= 0) {
    found->cause = RootOf(array_finding_);
    return;
  }
  array_finding_ = static_cast<std::int32_t>(findings_.size());
  if (found->cause >= 0) return;
  const char first = At(found->span.begin);
  const bool next_setting = IsFirstLetter(first) && At(SkipBlanks(text_, found->span.end)) == '=';
  if (next_setting || first == '}') {
    found->code = Code::UnclosedArray;
    found->span = {last_value_.begin, last_value_.begin + 1};
  }
}

void Survey::JudgeEnd(Finding* found) {
  const bool in_array = At(last_value_.begin) == '[' && last_value_.end >= text_.size() &&
                        end_finding_ < 0 && text_.back() != ']';
  found->cause = NoCause;
  if (end_finding_ >= 0) {
    found->cause = RootOf(end_finding_);
    return;
  }
  end_finding_ = static_cast<std::int32_t>(findings_.size());
  if (stretch_.whole && InStretch(found->span.begin)) found->cause = stretch_.head;
  if (in_array) {
    found->code = Code::UnclosedArray;
    found->span = {last_value_.begin, last_value_.begin + 1};
    if (array_finding_ >= 0) found->cause = RootOf(array_finding_);
    return;
  }
  if (found->cause < 0 && taken_end_ >= 0) found->cause = RootOf(taken_end_);
  std::size_t end = text_.size();
  while (end > 0 && (IsBlank(text_[end - 1]) || IsLineEnd(text_[end - 1]))) --end;
  found->span = {end, end};
  if (found->cause >= 0) return;
  if (odd_pair_.end > 0) return ShowOddPair(found);
  const std::size_t brace = meant_.size() > 1 ? meant_.back().brace : NoPlace;
  if (brace == NoPlace) return;
  found->related.push_back({file_index_, {brace, brace + 1}, "opened here"});
}

}  // namespace confgrove
