// Making the record of a file.
#include "parser/recorder.h"

namespace confgrove {

void Recorder::Add(PieceKind kind, std::int32_t section) {
  record_.pieces.push_back({lexer_.Begin(), lexer_.End(), section, kind});
}

void Recorder::Name() {
  const std::int32_t section = record_.section_count() + 1;
  open_.back().last = section;
  record_.sections.push_back({open_.back().section, section + 1, NextPlace(), 0, 0, 0});
  for (const std::size_t place : pending_) {
    record_.pieces[place].kind = PieceKind::CommentAbove;
    record_.pieces[place].section = section;
  }
  pending_.clear();
  Add(PieceKind::Name, section);
}

void Recorder::PendingComment() {
  pending_.push_back(record_.pieces.size());
  Add(PieceKind::LooseComment, 0);
}

void Recorder::OpenBody() {
  const std::int32_t section = open_.back().last;
  Section(section).open_body = NextPlace();
  Add(PieceKind::OpenBody, section);
  open_.push_back({section, 0});
}

void Recorder::CloseBody() {
  const std::int32_t section = open_.back().section;
  Section(section).close_body = NextPlace();
  Section(section).subtree_end = record_.section_count() + 1;
  Add(PieceKind::CloseBody, section);
}

void Recorder::InlineComment() {
  const std::int32_t section = open_.back().last;
  Section(section).inline_comment = NextPlace();
  Add(PieceKind::InlineComment, section);
}

void Recorder::BeginValue() {
  begun_ = record_.pieces.size();
  Add(PieceKind::Value, open_.back().last);
}

void Recorder::EndValue() {
  Piece& value = record_.pieces[begun_];
  value.end = lexer_.End();
  record_.nests = record_.nests || record_.pieces.size() > begun_ + 1;
  if (value.begin == value.end) record_.pieces.pop_back();  // the file ends where a value should be
}

void Recorder::BeginImport() {
  begun_ = record_.pieces.size();
  Add(PieceKind::Import, open_.back().section);
}

void Recorder::EndImport(bool carried_out) {
  record_.pieces[begun_].end = lexer_.End();
  record_.nests = record_.nests || record_.pieces.size() > begun_ + 1;
  if (!carried_out) {
    record_.pieces[begun_].kind = PieceKind::PassedOver;
    return;
  }
  // The root keeps the comment above the last import.
  for (const std::size_t place : head_) record_.pieces[place].kind = PieceKind::LooseComment;
  head_.swap(pending_);
  pending_.clear();
  for (const std::size_t place : head_) record_.pieces[place].kind = PieceKind::CommentAbove;
}

void Recorder::Stop() {
  if (!stopped()) record_.read_end = lexer_.End();
}

void Recorder::PassOver(Passed what, std::size_t begin, std::size_t end) {
  const auto kind_of = [what] {
    switch (what) {
      case Passed::BlockComment: return PieceKind::BlockComment;
      case Passed::OpenBlockComment: return PieceKind::OpenBlockComment;
      case Passed::Slash: return PieceKind::Slash;
      case Passed::CutOff: break;
    }
    return PieceKind::CutOff;
  };
  record_.pieces.push_back({begin, end, 0, kind_of()});
}

void Recorder::AddFault(bool is_error, const char* message, std::size_t begin, std::size_t end) {
  record_.faults.push_back(
      {is_error, !stopped(), message, lexer_.line, begin, end, record_.pieces.size()});
}

}  // namespace confgrove
