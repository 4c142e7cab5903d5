// Splices: changes of a text, collected in any order.
#ifndef CONFGROVE_TEXT_SPLICES_H
#define CONFGROVE_TEXT_SPLICES_H

#include <confgrove/save_in_place.h>

#include <cstddef>
#include <string>
#include <vector>

#include "text/file_text.h"

namespace confgrove {

// Of several splices that begin at one place, what comes first in the new text.
enum class Rank { Braces, OfSectionBefore, NewSection, CommentAbove, Name };

class Splices {
 public:
  // The bytes of `span` give way to `text`, whose lines end in LF. Spans may touch and overlap:
  // then all of them goes, and the texts stand one behind the other.
  void Put(Span span, std::string text, Rank rank = Rank::OfSectionBefore);

  void Remove(Span span) { Put(span, {}); }

  bool empty() const { return splices_.empty(); }

  // The spans so far, in order and apart: one stands for those that touch.
  std::vector<Span> Spans() const;

  // All of them as edits of the file on the disk, in order and apart. A blank keeps tokens apart
  // that would grow together; line ends are those of the lines around.
  std::vector<Edit> ToEdits(const FileText& file) &&;

 private:
  struct Splice {
    Span span;
    std::string text;
    Rank rank;
  };

  void Join();

  std::vector<Splice> splices_;
};

}  // namespace confgrove

#endif
