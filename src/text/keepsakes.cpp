// What a file holds beside its tree.
#include "text/keepsakes.h"

#include <utility>

#include "lexer/char_class.h"

namespace confgrove {
namespace {

class Finder {
 public:
  explicit Finder(const FileText& file) : file_(file), pieces_(file.record.pieces) {}

  Keepsakes Run() {
    for (at_ = 0; at_ < pieces_.size(); ++at_) Look(pieces_[at_]);
    return std::move(found_);
  }

 private:
  std::string Text(const Piece& piece) const {
    return std::string(file_.Bytes({piece.begin, piece.end}));
  }

  void Look(const Piece& piece) {
    switch (piece.kind) {
      case PieceKind::Name:
      case PieceKind::Value:
        section_ = piece.section;
        value_end_ = piece.end;
        after_brace_ = false;
        break;
      case PieceKind::OpenBody:
        open_.push_back(piece.section);
        after_brace_ = true;
        break;
      case PieceKind::CloseBody:
        open_.pop_back();
        section_ = piece.section;
        break;
      case PieceKind::InlineComment:
        if (piece.begin != file_.At(piece.section).inline_comment.begin) {
          found_.above[piece.section].push_back("/*" + Text(piece).substr(1) + "*/");
        }
        break;
      case PieceKind::BlockComment: Keep(piece, Text(piece)); break;
      case PieceKind::Slash: {
        std::string text = Text(piece);
        // The byte that it takes along is not to be the end of its new line.
        if (text.size() == 1) text += ' ';
        if (IsLineEnd(text.back())) text.back() = ' ';
        Keep(piece, std::move(text));
        break;
      }
      case PieceKind::LooseComment: KeepComment(Text(piece)); break;
      case PieceKind::CutOff:
        if (file_.text[piece.begin] == '#') {
          KeepComment(Text(piece));
        } else {
          found_.cut_off = Text(piece);
        }
        break;
      case PieceKind::OpenBlockComment: found_.cut_off = Text(piece); break;
      default: break;
    }
  }

  // What comes next that a keepsake can stand in front of or belong to; null at the end of the
  // file.
  const Piece* Next() const {
    for (std::size_t i = at_ + 1; i < pieces_.size(); ++i) {
      switch (pieces_[i].kind) {
        case PieceKind::Name:
        case PieceKind::Assign:
        case PieceKind::Value:
        case PieceKind::OpenBody:
        case PieceKind::CloseBody:
        case PieceKind::Import: return &pieces_[i];
        default: break;
      }
    }
    return nullptr;
  }

  void Keep(const Piece& piece, std::string text) {
    const bool in_value = piece.begin < value_end_;
    const bool on_line =
        section_ != 0 && !after_brace_ && !file_.BeginsLine(at_) && file_.EndsLine(piece.end);
    const Piece* const next = Next();
    if (in_value || on_line) {
      found_.above[section_].push_back(std::move(text));
    } else if (next == nullptr) {
      found_.at_end_of[0].push_back(std::move(text));
    } else if (next->kind == PieceKind::Import) {
      found_.head.push_back(std::move(text));
    } else if (next->kind == PieceKind::CloseBody) {
      found_.at_end_of[next->section].push_back(std::move(text));
    } else {
      found_.above[next->section].push_back(std::move(text));
    }
  }

  void KeepComment(std::string text) {
    const Piece* const next = Next();
    if (next != nullptr && next->kind == PieceKind::Import) {
      found_.head.push_back(std::move(text));
    } else {
      found_.at_end_of[next != nullptr ? open_.back() : 0].push_back(std::move(text));
    }
  }

  const FileText& file_;
  const std::vector<Piece>& pieces_;
  std::size_t at_ = 0;
  std::vector<std::int32_t> open_{0};
  std::int32_t section_ = 0;   // the one that stands before
  std::size_t value_end_ = 0;  // of its name or value
  bool after_brace_ = false;   // no section stands between the last '{' and here
  Keepsakes found_;
};

}  // namespace

Keepsakes FindKeepsakes(const FileText& file) { return Finder(file).Run(); }

}  // namespace confgrove
