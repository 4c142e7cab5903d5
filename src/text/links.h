// Links that lead nowhere.
#ifndef CONFGROVE_TEXT_LINKS_H
#define CONFGROVE_TEXT_LINKS_H

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/findings.h"
#include "text/survey.h"

namespace confgrove {

// Which file of a load is imported by which.
class ImportTree {
 public:
  explicit ImportTree(const std::list<Survey>& surveys);

  std::size_t size() const { return surveys_.size(); }
  const Survey& operator[](std::size_t file) const { return *surveys_[file]; }

  // The file of that name; size() if there is none.
  std::size_t Find(std::string_view name) const;

  // The directive that imports a file other than the first.
  const Remark& ImporterOf(std::size_t file) const { return importers_[file]; }

  // Whether `file` is `top`, or is imported by it or by what it imports.
  bool IsWithin(std::size_t file, std::size_t top) const;

  static std::string_view NameIn(std::string_view directive);

 private:
  std::vector<const Survey*> surveys_;
  std::unordered_map<std::string_view, std::size_t> by_name_;
  std::vector<Remark> importers_;
};

class Links {
 public:
  Links(const ImportTree& tree, std::vector<Finding>* findings)
      : tree_(tree), findings_(*findings) {}

  // Settles all links of a file.
  void Follow(std::size_t file);

 private:
  struct Target {
    std::size_t file;
    std::int32_t section;
    std::string path;
  };

  void Settle(const Survey& survey, Finding* found);
  std::int32_t CauseInImports(const Survey& survey, std::string_view path,
                              const Finding& found) const;
  std::int32_t EndOfReading(const Survey& survey, std::size_t file) const;
  void PointToLater(const Survey& survey, std::int32_t target, Finding* found);
  void Suggest(std::string_view path, Finding* found);
  static void MoveBehind(const Survey& survey, std::int32_t target, Finding* found);
  std::vector<Target> TargetsFrom(std::size_t top) const;

  const ImportTree& tree_;
  std::vector<Finding>& findings_;
  std::int32_t looked_up_ = 0;

  // Of the file at hand.
  std::vector<Target> targets_;            // none until they are needed
  std::int32_t end_of_reading_ = NoCause;  // the finding, if links behind it can't be judged
};

}  // namespace confgrove

#endif
