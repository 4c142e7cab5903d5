// Survey: what is wrong with one file of a load, and what follows from what.
#ifndef CONFGROVE_TEXT_SURVEY_H
#define CONFGROVE_TEXT_SURVEY_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "parser/load.h"
#include "text/findings.h"
#include "text/positions.h"
#include "text/section_map.h"

namespace confgrove {

// Goes through the record of a file beside the reader, with one difference: it knows where each
// block was meant to end. What the reader has elsewhere because it lost its way follows from the
// place where it did.
class Survey {
 public:
  // All outlive the survey. What is found goes behind what `findings` holds.
  Survey(const RecordedFile& file, std::size_t file_index, std::vector<Finding>* findings);

  void Run();

  const RecordedFile& file() const { return file_; }
  std::string_view text() const { return text_; }
  const SectionMap& sections() const { return sections_; }

  // The line in which `place` stands, as messages count.
  std::int32_t LineOf(std::size_t place) const;

  // The last piece that ends at `place` or in front of it, and the first that begins there or
  // behind; null without one. Block comments, and what a '/' takes along, don't count.
  const Piece* PieceBefore(std::size_t place) const;
  const Piece* PieceFrom(std::size_t place) const;

  // Findings whose cause can stand in other files: links without a target, imports that failed.
  const std::vector<std::int32_t>& links() const { return links_; }
  const std::vector<std::int32_t>& imports() const { return imports_; }

 private:
  static constexpr std::size_t NoPlace = std::string_view::npos;

  // A body that was opened and not yet closed.
  struct Level {
    std::int32_t section;  // meant
    std::int32_t last;     // made last in it
    std::int32_t cause;    // why it isn't the reader's; NoCause
    std::size_t brace;     // NoPlace: the reader didn't take it for one
  };
  // A stretch in which everything that is wrong follows from its beginning.
  struct Stretch {
    std::int32_t head = NoCause;
    std::size_t end = 0;
    bool whole = false;  // to its end, whatever stands in it
  };

  // survey.cpp: pieces.
  void TakePiece(std::size_t index);
  void TakeName(const Piece& piece);
  void TakeValue(const Piece& piece);
  void TakeInlineComment(const Piece& piece);
  void OpenBody(const Piece& piece);
  void CloseBody(const Piece& piece);
  void PassOver(const Piece& piece);
  void TakeSilent(const Piece& piece);
  void FindNul();
  void EatBrace(char brace, std::int32_t cause);
  void EatBraces(std::string_view eaten, std::int32_t cause);

  // faults.cpp: what the reader has reported.
  void TakeFault(const Fault& fault);
  void Judge(Finding* found);
  void JudgeName(Finding* found);
  void JudgeRedefinition(Finding* found);
  void JudgeTwoNames(Finding* found);
  void JudgeBrace(Finding* found);
  void JudgeByte(Finding* found);
  void JudgeValue(Finding* found);
  void JudgeElement(Finding* found);
  void JudgeText(Finding* found);
  void JudgeEnd(Finding* found);
  void ShowOddPair(Finding* found) const;
  void JudgeBadWord(Finding* found);
  void AfterFault(std::int32_t index);

  std::int32_t AddFinding(Finding found);
  void BeginStretch(std::int32_t head, std::size_t from, bool whole);
  bool InStretch(std::size_t place) const { return stretch_.head >= 0 && place < stretch_.end; }
  std::int32_t RootOf(std::int32_t index) const;
  std::int32_t LostBy() const;
  Finding& finding(std::int32_t index) { return findings_[static_cast<std::size_t>(index)]; }
  char At(std::size_t place) const { return place < text_.size() ? text_[place] : '\0'; }

  const RecordedFile& file_;
  const std::vector<Piece>& pieces_;
  const std::vector<Fault>& faults_;
  std::vector<const Piece*> telling_;  // those that count for PieceBefore
  std::string_view text_;
  mutable std::unique_ptr<Positions> positions_;  // made when a line is asked for
  std::size_t file_index_;
  std::vector<Finding>& findings_;

  SectionMap sections_;                 // as they were meant
  SectionMap found_;                    // as the reader has them, by the same numbers
  std::vector<std::int32_t> meant_of_;  // by the reader's numbers
  std::vector<Level> meant_;            // open bodies
  std::vector<std::int32_t> actual_;    // the reader's
  std::int32_t lost_by_ = NoCause;      // why the two differ
  Stretch stretch_;
  std::size_t next_fault_ = 0;
  Span last_token_;  // before the one at hand
  std::int32_t last_token_cause_ = NoCause;
  bool last_token_is_name_ = false;
  bool last_token_is_assign_ = false;
  std::int32_t last_text_ = NoCause;    // the last one without an end
  std::int32_t last_name_ = NoSection;  // that waits for its value
  Span last_assign_;
  Span last_value_;
  std::int32_t last_finding_ = NoCause;  // of the reader's
  std::size_t last_fault_begin_ = 0;
  std::int32_t array_finding_ = NoCause;  // the first in the array at hand
  std::int32_t nul_ = NoCause;
  std::int32_t end_finding_ = NoCause;                      // the first at the end of the file
  std::int32_t taken_end_ = NoCause;                        // what took a closing brace, or the end
  Span odd_pair_;                                           // braces of different indentation
  std::unordered_map<std::int32_t, Span> inline_comments_;  // by the reader's numbers
  std::vector<std::int32_t> links_;
  std::vector<std::int32_t> imports_;
};

// Its text. wording.cpp
void PutInWords(const Survey& survey, Finding* found);

// The fixes of a finding that follows from none. ways_out.cpp
void AddWaysOut(const Survey& survey, Finding* found);

}  // namespace confgrove

#endif
