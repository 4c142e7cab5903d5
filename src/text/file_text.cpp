// A file as text and as a tree.
#include "text/file_text.h"

#include <algorithm>
#include <utility>

#include "base/settings.h"
#include "base/silence.h"
#include "lexer/char_class.h"
#include "parser/load.h"

namespace confgrove {
namespace {

Span SpanOf(const Piece& piece) { return {piece.begin, piece.end}; }

bool HasPairs(const std::string& bytes) { return bytes.find("\r\n") != std::string::npos; }

}  // namespace

std::unique_ptr<RootSection> TreeOf(const std::string& bytes, const FileOrigin& origin) {
  const Silence silence;
  const SettingsOf settings(origin);
  Load load;
  if (!HasPairs(bytes)) return ParseFile(&load, origin.name, bytes, false, 1);
  return ParseFile(&load, origin.name, JoinedLines(bytes), false, 1);
}

FileText::FileText(const std::string& all_bytes, const FileOrigin& origin)
    : bytes(all_bytes), lines(bytes) {
  const Silence silence;
  const SettingsOf settings(origin);
  Load load;
  load.records_first = true;
  if (HasPairs(bytes)) joined_ = JoinedLines(bytes);
  const std::string& read = joined_.empty() ? bytes : joined_;
  text = read;
  root_ = ParseFile(&load, origin.name, read, false, 1);
  record = std::move(load.recorded.front().record);
  FindEnds();
  if (root_ == nullptr) return;
  record.sections.front().subtree_end = record.section_count() + 1;
  nodes_.resize(record.sections.size());
  nodes_.front() = root_.get();
  if (!root_->imports.empty()) FindImports();
}

// A piece that another one holds ends in front of it.
void FileText::FindEnds() {
  if (!record.nests) return;
  ends_.reserve(record.pieces.size());
  std::size_t end = 0;
  for (const Piece& piece : record.pieces) ends_.push_back(end = std::max(end, piece.end));
}

void FileText::FindImports() {
  for (std::size_t i = 0; i < record.pieces.size(); ++i) {
    if (record.pieces[i].kind != PieceKind::Import) continue;
    ++import_count;
    last_import = i;
  }
}

// What belongs to a section follows its name, up to the body, and then its last '}'.
SectionText FileText::At(std::int32_t number) const {
  const SectionPieces& place = record.sections[Index(number)];
  SectionText here;
  here.section = &Node(number);
  here.parent = place.parent;
  here.name_piece = place.name;
  if (number == 0) return here;
  const auto& pieces = record.pieces;
  here.name = SpanOf(pieces[place.name]);
  if (place.inline_comment != 0) here.inline_comment = SpanOf(pieces[place.inline_comment]);
  for (std::size_t i = here.name_piece + 1; i < pieces.size(); ++i) {
    const PieceKind kind = pieces[i].kind;
    if (kind == PieceKind::Name || kind == PieceKind::CloseBody) break;
    if (pieces[i].section != number) continue;
    if (kind == PieceKind::Assign) here.assign = SpanOf(pieces[i]);
    if (kind == PieceKind::Value) here.value = SpanOf(pieces[i]);
    if (kind == PieceKind::OpenBody) {
      here.first_open = SpanOf(pieces[i]);
      break;
    }
  }
  if (place.close_body == 0) return here;
  here.close = SpanOf(pieces[place.close_body]);
  here.open = SpanOf(pieces[place.open_body]);
  return here;
}

// The sections of a tree from its top down are in the order of their names in the file.
const RealSection& FileText::Node(std::int32_t number) const {
  if (nodes_[Index(number)] != nullptr) return *nodes_[Index(number)];
  std::vector<std::int32_t> blocks;
  for (std::int32_t at = number; nodes_[Index(at)] == nullptr;
       at = record.sections[Index(at)].parent) {
    blocks.push_back(record.sections[Index(at)].parent);
  }
  for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
    const Children& children = *nodes_[Index(*block)]->children;
    std::int32_t index = 0;
    for (std::int32_t child = FirstChild(*block); child != 0; child = NextSibling(child)) {
      nodes_[Index(child)] = children.at(index++);
    }
  }
  return *nodes_[Index(number)];
}

const Fault* FileText::FirstError() const {
  const auto error = std::find_if(record.faults.begin(), record.faults.end(),
                                  [](const Fault& fault) { return fault.is_error; });
  return error != record.faults.end() ? &*error : nullptr;
}

std::string FileText::NameOf(std::int32_t number) const {
  if (number == 0) return {};
  return std::string(Bytes(SpanOf(record.pieces[record.sections[Index(number)].name])));
}

std::size_t FileText::FirstDirectComment(std::size_t piece) const {
  while (piece > 0 && IsComment(record.pieces[piece - 1])) {
    const std::string_view gap = Bytes({record.pieces[piece - 1].end, record.pieces[piece].begin});
    if (std::count_if(gap.begin(), gap.end(), IsLineEnd) != 1) break;
    --piece;
  }
  return piece;
}

std::string FileText::CommentText(std::size_t first, std::size_t end) const {
  std::string comment;
  for (std::size_t i = first; i < end; ++i) {
    const Piece& piece = record.pieces[i];
    if (IsComment(piece)) comment.append(Bytes({piece.begin + 1, piece.end})) += '\n';
  }
  return comment;
}

std::size_t FileText::PieceFrom(std::size_t offset) const {
  const auto found =
      std::partition_point(record.pieces.begin(), record.pieces.end(),
                           [offset](const Piece& piece) { return piece.begin < offset; });
  return static_cast<std::size_t>(found - record.pieces.begin());
}

bool FileText::BeginsLine(std::size_t piece) const {
  const std::string_view gap = Bytes({EndBefore(piece), record.pieces[piece].begin});
  return EndBefore(piece) == 0 || std::any_of(gap.begin(), gap.end(), IsLineEnd);
}

std::size_t FileText::LineBegin(std::size_t piece) const {
  std::size_t begin = record.pieces[piece].begin;
  while (begin > EndBefore(piece) && !IsLineEnd(text[begin - 1])) --begin;
  return begin;
}

std::size_t FileText::LineStop(std::size_t end) const {
  while (end < text.size() && (text[end] == ' ' || text[end] == '\t' || text[end] == '\f')) ++end;
  return end;
}

bool FileText::EndsLine(std::size_t end) const {
  const std::size_t stop = LineStop(end);
  return stop == text.size() || IsLineEnd(text[stop]);
}

bool FileText::CommentFollows(std::size_t end) const {
  for (std::size_t i = PieceFrom(end); i < record.pieces.size() && !EndsLine(end); ++i) {
    const Piece& piece = record.pieces[i];
    if (IsComment(piece)) return true;
    // For a comment behind it, a block comment is all on one line.
    if (piece.kind != PieceKind::BlockComment && HasLineEnd(Bytes(SpanOf(piece)))) return false;
    end = std::max(end, piece.end);
  }
  return false;
}

std::size_t FileText::NextLine(std::size_t end) const {
  const std::size_t stop = LineStop(end);
  return stop < text.size() ? stop + 1 : stop;
}

}  // namespace confgrove
