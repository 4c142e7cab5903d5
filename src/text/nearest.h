// Nearest: what somebody may have meant by a name that leads nowhere.
#ifndef CONFGROVE_TEXT_NEAREST_H
#define CONFGROVE_TEXT_NEAREST_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove {

// How many changes of a byte, or of the order of two, turn one text into the other; something above
// `most` if they are more than that.
inline std::size_t Distance(std::string_view a, std::string_view b, std::size_t most) {
  const std::size_t gap = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  if (gap > most) return most + 1;
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> above(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) above[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    std::size_t least = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] =
          std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
      least = std::min(least, row[j]);
    }
    if (least > most) return most + 1;
    before.swap(above);
    above.swap(row);
  }
  return above[b.size()];
}

// Takes candidates one by one, and keeps the nearest to `wanted`.
class Nearest {
 public:
  explicit Nearest(std::string_view wanted) : wanted_(wanted), least_(wanted.size() / 3 + 1) {}

  // Whether it is the nearest so far.
  bool Take(std::string_view candidate) {
    if (least_ == 0) return false;
    const std::size_t distance = Distance(wanted_, candidate, least_);
    if (distance > wanted_.size() / 3 || distance > least_) return false;
    tied_ = distance == least_;
    least_ = distance;
    return !tied_;
  }

  // Whether one is near, and nearer than any other.
  bool IsClear() const { return least_ <= wanted_.size() / 3 && !tied_; }

 private:
  std::string_view wanted_;
  std::size_t least_;
  bool tied_ = false;
};

}  // namespace confgrove

#endif
