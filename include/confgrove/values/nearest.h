// Nearest: what somebody may have meant by a name that leads nowhere.
#ifndef CONFGROVE_VALUES_NEAREST_H
#define CONFGROVE_VALUES_NEAREST_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove::detail {

// Takes candidates one by one, and keeps the one that is nearest to `wanted`. More than a third of
// the longer of the two would be guessing, and so would be one of several.
class Nearest {
 public:
  explicit Nearest(std::string_view wanted) : wanted_(wanted), least_(wanted.size() + 1) {}

  void Take(std::string_view candidate) {
    if (candidate == found_) return;
    const std::size_t most = std::min(least_, std::max(wanted_.size(), candidate.size()) / 3);
    const std::size_t distance = DistanceTo(candidate, most);
    if (distance > most) return;
    if (distance == least_) {
      ++rivals_;
      return;
    }
    rivals_ = 0;
    least_ = distance;
    found_ = candidate;
  }

  // "" if none is near, or several are equally.
  std::string_view Found() const { return rivals_ == 0 ? found_ : std::string_view(); }

 private:
  // How many bytes must be changed, put in, taken out or swapped with the next to turn one into the
  // other; something above `most` if they are more than that.
  std::size_t DistanceTo(std::string_view other, std::size_t most) {
    const std::size_t size = other.size();
    const std::size_t gap = std::max(wanted_.size(), size) - std::min(wanted_.size(), size);
    if (gap > most) return most + 1;
    before_.assign(size + 1, 0);
    last_.assign(size + 1, 0);
    row_.assign(size + 1, 0);
    for (std::size_t j = 0; j <= size; ++j) last_[j] = j;
    for (std::size_t i = 1; i <= wanted_.size(); ++i) {
      row_[0] = i;
      std::size_t least = i;
      for (std::size_t j = 1; j <= size; ++j) {
        const std::size_t change = wanted_[i - 1] == other[j - 1] ? 0 : 1;
        row_[j] = std::min({last_[j] + 1, row_[j - 1] + 1, last_[j - 1] + change});
        const bool swapped =
            i > 1 && j > 1 && wanted_[i - 1] == other[j - 2] && wanted_[i - 2] == other[j - 1];
        if (swapped) row_[j] = std::min(row_[j], before_[j - 2] + 1);
        least = std::min(least, row_[j]);
      }
      if (least > most) return most + 1;
      before_.swap(last_);
      last_.swap(row_);
    }
    return last_[size];
  }

  std::string_view wanted_;
  std::size_t least_;  // the distance of the nearest; more than any can be without one
  std::size_t rivals_ = 0;
  std::string found_{};
  std::vector<std::size_t> before_{}, last_{}, row_{};  // of the table of distances
};

}  // namespace confgrove::detail

#endif
