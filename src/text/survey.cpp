// Going through the pieces of a file.
#include "text/survey.h"

#include <algorithm>
#include <utility>

#include "text/lines.h"

namespace confgrove {
namespace {

bool BeginsNumber(char c) { return IsDigit(c) || c == '.' || c == '-' || c == '+'; }

}  // namespace

Survey::Survey(const RecordedFile& file, std::size_t file_index, std::vector<Finding>* findings)
    : file_(file),
      pieces_(file.record.pieces),
      faults_(file.record.faults),
      text_(file.text),
      file_index_(file_index),
      findings_(*findings),
      meant_of_{0},
      meant_{{0, NoSection, NoCause, 0}},
      actual_{0} {}

void Survey::Run() {
  FindNul();
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    for (; next_fault_ < faults_.size() && faults_[next_fault_].pieces <= i; ++next_fault_) {
      TakeFault(faults_[next_fault_]);
    }
    TakePiece(i);
  }
  for (; next_fault_ < faults_.size(); ++next_fault_) TakeFault(faults_[next_fault_]);
  for (const Piece& piece : pieces_) {
    const bool counts = piece.kind != PieceKind::BlockComment && piece.kind != PieceKind::Slash;
    if (counts) telling_.push_back(&piece);
  }
}

std::int32_t Survey::LineOf(std::size_t place) const {
  if (positions_ == nullptr) positions_ = std::make_unique<Positions>(text_, file_.record, "");
  return positions_->Line(place);
}

const Piece* Survey::PieceBefore(std::size_t place) const {
  auto at =
      std::lower_bound(telling_.begin(), telling_.end(), place,
                       [](const Piece* piece, std::size_t end) { return piece->begin < end; });
  while (at != telling_.begin() && at[-1]->end > place) --at;
  return at != telling_.begin() ? at[-1] : nullptr;
}

const Piece* Survey::PieceFrom(std::size_t place) const {
  const auto at =
      std::lower_bound(telling_.begin(), telling_.end(), place,
                       [](const Piece* piece, std::size_t begin) { return piece->begin < begin; });
  return at != telling_.end() ? *at : nullptr;
}

// One for all of a file: where there is one, there are more.
void Survey::FindNul() {
  for (std::size_t at = text_.find('\0'); at != std::string_view::npos; at = text_.find('\0', at)) {
    const auto behind =
        std::upper_bound(pieces_.begin(), pieces_.end(), at,
                         [](std::size_t place, const Piece& piece) { return place < piece.begin; });
    if (behind == pieces_.begin() || behind[-1].kind != PieceKind::BlockComment ||
        behind[-1].end <= at) {
      Finding found;
      found.code = Code::NulByte;
      found.span = {at, at + 1};
      nul_ = AddFinding(std::move(found));
      const std::string_view start = text_.substr(0, 4);
      const bool is_utf16 = start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF";
      if (!is_utf16 || start.find('\0') == std::string_view::npos) return;
      finding(nul_).code = Code::ByteOrderMark;
      finding(nul_).span = {0, 2};
      stretch_ = {nul_, text_.size() + 1, true};
      return;
    }
    at = behind[-1].end;
  }
}

std::int32_t Survey::AddFinding(Finding found) {
  found.file = file_index_;
  found.is_read = found.is_read && found.span.begin < file_.record.read_end;
  findings_.push_back(std::move(found));
  return static_cast<std::int32_t>(findings_.size()) - 1;
}

std::int32_t Survey::RootOf(std::int32_t index) const {
  while (index >= 0 && findings_[static_cast<std::size_t>(index)].cause >= 0) {
    index = findings_[static_cast<std::size_t>(index)].cause;
  }
  return index;
}

void Survey::BeginStretch(std::int32_t head, std::size_t from, bool whole) {
  stretch_.head = head;
  stretch_.whole = whole;
  if (stretch_.end <= from) stretch_.end = LineEnd(text_, from);
}

// Why the body at hand isn't the one that was meant; NoCause if it is.
std::int32_t Survey::LostBy() const {
  if (meant_.back().section == actual_.back()) return NoCause;
  return meant_.back().cause >= 0 ? meant_.back().cause : lost_by_;
}

void Survey::TakePiece(std::size_t index) {
  const Piece& piece = pieces_[index];
  switch (piece.kind) {
    case PieceKind::Name: TakeName(piece); break;
    case PieceKind::Assign: last_assign_ = {piece.begin, piece.end}; break;
    case PieceKind::Value: TakeValue(piece); break;
    case PieceKind::OpenBody: OpenBody(piece); break;
    case PieceKind::CloseBody: CloseBody(piece); break;
    case PieceKind::PassedOver: PassOver(piece); break;
    case PieceKind::InlineComment: TakeInlineComment(piece); break;
    case PieceKind::BlockComment: return;
    case PieceKind::OpenBlockComment:
    case PieceKind::Slash:
    case PieceKind::CutOff: return TakeSilent(piece);
    default: break;
  }
  last_token_ = {piece.begin, piece.end};
  last_token_is_name_ = piece.kind == PieceKind::Name ||
                        (piece.kind == PieceKind::PassedOver && IsFirstLetter(At(piece.begin)));
  last_token_is_assign_ = piece.kind == PieceKind::Assign;
  if (piece.kind != PieceKind::Name && !last_token_is_assign_) {
    const bool at_fault = last_finding_ >= 0 && last_fault_begin_ >= piece.begin;
    last_token_cause_ = at_fault ? RootOf(last_finding_) : NoCause;
  }
}

void Survey::TakeName(const Piece& piece) {
  const Span span = {piece.begin, piece.end};
  std::int32_t cause = LostBy();
  const bool runs_on =
      last_value_.end == piece.begin && last_value_.end > 0 && BeginsNumber(At(last_value_.begin));
  if (InStretch(piece.begin)) {
    cause = stretch_.head;
  } else if (runs_on) {
    Finding found;
    found.code = Code::NumberRunsOn;
    found.span = {last_value_.begin, piece.end};
    cause = AddFinding(std::move(found));
    BeginStretch(cause, piece.begin, false);
  }
  const std::int32_t section = sections_.Add(meant_.back().section, span.In(text_), span, cause);
  found_.Add(actual_.back(), span.In(text_), span, cause);
  meant_of_.push_back(section);
  meant_.back().last = section;
  last_name_ = section;
  last_token_cause_ = cause;
}

void Survey::TakeValue(const Piece& piece) {
  last_value_ = {piece.begin, piece.end};
  array_finding_ = NoCause;
  if (last_name_ != NoSection) sections_[last_name_].end = piece.end;
  const bool lexer_fault = last_finding_ >= 0 && last_fault_begin_ >= piece.begin;
  const bool sound =
      !lexer_fault && (next_fault_ == faults_.size() || faults_[next_fault_].begin >= piece.end);
  // A whole setting ends a stretch, but for one that a longer word runs on into.
  if (!sound || !InStretch(piece.begin) || stretch_.whole || last_name_ == NoSection) return;
  if (sections_[last_name_].span.begin < finding(stretch_.head).span.end) return;
  stretch_ = {};
  sections_[last_name_].cause = LostBy();
}

// A comment that takes the place of another one.
void Survey::TakeInlineComment(const Piece& piece) {
  const auto [entry, is_first] =
      inline_comments_.try_emplace(piece.section, Span{piece.begin, piece.end});
  if (is_first) return;
  const std::string_view lost = entry->second.In(text_);
  if (lost != Span{piece.begin, piece.end}.In(text_) &&
      lost.find_first_not_of("# \t") != std::string_view::npos) {
    Finding found;
    found.code = Code::CommentReplaced;
    found.span = entry->second;
    found.related.push_back({file_index_, {piece.begin, piece.end}, "this one takes its place"});
    AddFinding(std::move(found));
  }
  entry->second = {piece.begin, piece.end};
}

void Survey::OpenBody(const Piece& piece) {
  const std::int32_t opened = meant_of_[static_cast<std::size_t>(piece.section)];
  const std::int32_t last = meant_.back().last;
  const std::int32_t section = last != NoSection ? last : opened;
  std::int32_t cause = meant_.back().cause;
  if (section != opened && last_token_cause_ >= 0) cause = last_token_cause_;
  if (section != opened && cause < 0) cause = sections_[section].cause;
  meant_.push_back({section, NoSection, cause, piece.begin});
  actual_.push_back(opened);
  last_name_ = NoSection;
}

void Survey::CloseBody(const Piece& piece) {
  last_name_ = NoSection;
  const bool is_brace = At(piece.begin) == '}';
  if (is_brace && meant_.size() > 1) {
    const std::size_t brace = meant_.back().brace;
    if (odd_pair_.end == 0 && brace != NoPlace && IsFirstOnLine(text_, piece.begin) &&
        IndentAt(text_, piece.begin) != IndentAt(text_, brace)) {
      odd_pair_ = {brace, piece.begin};
    }
    sections_[meant_.back().section].end = piece.end;
    meant_.pop_back();
  }
  if (actual_.size() > 1) {
    actual_.pop_back();
    if (!is_brace) lost_by_ = RootOf(last_finding_);
  }
  if (meant_.size() == 1 && actual_.size() == 1) lost_by_ = NoCause;
}

void Survey::PassOver(const Piece& piece) {
  const bool at_fault = last_finding_ >= 0 && last_fault_begin_ == piece.begin;
  if (At(piece.begin) == '{' && !at_fault) {
    Finding found;
    found.code = Code::NamelessBlock;
    found.span = {piece.begin, piece.end};
    found.cause = InStretch(piece.begin) ? stretch_.head : last_token_cause_;
    EatBrace('{', RootOf(AddFinding(std::move(found))));
    meant_.back().brace = piece.begin;
  }
}

// What is lost without a message.
void Survey::TakeSilent(const Piece& piece) {
  Finding found;
  found.span = {piece.begin, piece.end};
  const std::string_view bytes = found.span.In(text_);
  found.code = piece.kind == PieceKind::Slash    ? Code::Slash
               : piece.kind == PieceKind::CutOff ? Code::CutOff
                                                 : Code::UnclosedComment;
  // A comment at the end of the file is lost as well with a line end behind it, but for one behind
  // a setting.
  if (piece.kind == PieceKind::CutOff && bytes.front() == '#') {
    const std::size_t begin = LineBegin(text_, piece.begin);
    if (last_token_.end <= begin || sections_.size() == 1) return;
    if (bytes.find_first_not_of("# \t") == std::string_view::npos) return;
  }
  if (InStretch(piece.begin)) found.cause = stretch_.head;
  const bool starts = found.cause < 0;
  const std::int32_t index = AddFinding(std::move(found));
  if (piece.kind == PieceKind::Slash) {
    if (starts) BeginStretch(index, piece.begin, bytes == "//");
    EatBraces(bytes, RootOf(index));
  } else if (bytes.find('}') != std::string_view::npos) {
    taken_end_ = RootOf(index);
  }
  if (piece.kind == PieceKind::CutOff) {
    last_finding_ = index;
    last_fault_begin_ = text_.size();
  }
}

// A brace that the reader takes for something else, or for nothing.
void Survey::EatBrace(char brace, std::int32_t cause) {
  if (brace == '{') {
    const std::int32_t last = meant_.back().last;
    meant_.push_back({last != NoSection ? last : meant_.back().section, NoSection, cause, NoPlace});
    lost_by_ = cause;
  } else if (brace == '}') {
    if (meant_.size() > 1) meant_.pop_back();
    lost_by_ = taken_end_ = cause;
  }
}

void Survey::EatBraces(std::string_view eaten, std::int32_t cause) {
  const auto count = [eaten](char c) { return std::count(eaten.begin(), eaten.end(), c); };
  std::ptrdiff_t open = count('{') - count('}');
  for (; open > 0; --open) EatBrace('{', cause);
  for (; open < 0; ++open) EatBrace('}', cause);
}

}  // namespace confgrove
