// The load under way: its counters, the names of its files, and the reading of one file.
#ifndef CONFGROVE_FRONT_LOAD_H
#define CONFGROVE_FRONT_LOAD_H

#include <cstdint>
#include <list>
#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace confgrove {

class RootSection;

// Errors and warnings of the load, imports included. ConfParser counts, ResetLoadState clears.
extern std::int32_t ErrorCount;
extern std::int32_t WarningCount;

// File names in the order in which their reading began, with a quick test for one of them.
class FileNames {
 public:
  void Append(const std::string& name);
  bool Contains(std::string_view name) const { return known_.count(name) != 0; }
  void Clear();
  const std::list<std::string>& names() const { return names_; }

 private:
  std::list<std::string> names_;      // a list keeps its strings where `known_` points
  std::set<std::string_view> known_;  // into names_
};

// All files that the load has begun, each name as LoadFile received it. A file stays in it when it
// is done or has failed. LoadFile appends, ResetLoadState clears.
FileNames& ImportStack();

void ResetLoadState();

// Sends the summary, if there is a reason to, and returns ErrorCount.
std::int32_t ReportCounts();

// Reads the file of the configuration `name` into a new root. `depth` is its place in the chain of
// imports, 1 for the file that the host opens. Null if it can't be opened or if the load has any
// error by then; each was reported.
std::unique_ptr<RootSection> LoadFile(const std::string& name, bool read_only, std::int32_t depth);

}  // namespace confgrove

#endif
