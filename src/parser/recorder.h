// Recorder: makes the record of a file while it is parsed.
#ifndef CONFGROVE_PARSER_RECORDER_H
#define CONFGROVE_PARSER_RECORDER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "lexer/lexer.h"
#include "parser/record.h"

namespace confgrove {

// ConfParser tells it what each token turned out to be, after it was read and before the next is.
class Recorder {
 public:
  // Both outlive the recorder; `lexer` is the parser's.
  Recorder(const Lexer& lexer, Record* record) : lexer_(lexer), record_(*record) {}

  // The current token is this.
  void Name();
  void Assign() { Add(PieceKind::Assign, open_.back().last); }
  void InlineComment();
  void PendingComment();
  void OpenBody();
  void CloseBody();
  void Ignore() { Add(PieceKind::PassedOver, 0); }

  // The body at hand has ended, with a closing brace or without.
  void EndBody() { open_.pop_back(); }

  // No section gets the comments that are pending.
  void DropPending() { pending_.clear(); }

  // A value or an import begins with the current token; it ends with the one that is current at the
  // second call. An import that was carried out takes the pending comments for the root.
  void BeginValue();
  void EndValue();
  void BeginImport();
  void EndImport(bool carried_out);

  // Reading ends for good behind the current token; what comes is read for the record alone.
  void Stop();
  bool stopped() const { return record_.read_end != std::string::npos; }

  void PassOver(Passed what, std::size_t begin, std::size_t end);
  void AddFault(bool is_error, const char* message, std::size_t begin, std::size_t end);

 private:
  struct Body {
    std::int32_t section;
    std::int32_t last;  // the section made last in it
  };

  void Add(PieceKind kind, std::int32_t section);
  std::uint32_t NextPlace() const { return static_cast<std::uint32_t>(record_.pieces.size()); }
  SectionPieces& Section(std::int32_t section) {
    return record_.sections[static_cast<std::size_t>(section)];
  }

  const Lexer& lexer_;
  Record& record_;
  std::vector<Body> open_{{0, 0}};

  // Places among the pieces.
  std::vector<std::size_t> pending_;  // comments that wait for a section
  std::vector<std::size_t> head_;     // comments of the root, so far
  std::size_t begun_ = 0;             // the value or import at hand
};

}  // namespace confgrove

#endif
