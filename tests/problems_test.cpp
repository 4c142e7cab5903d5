// The ways out of each file in tests/problems, and what Check does beside its answer.
#include <confgrove/problem.h>
#include <confgrove/values/nearest.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <vector>

#include "support.h"

namespace {

using confgrove::Check;
using confgrove::Problem;
namespace fs = std::filesystem;

// How often each code comes up among the problems that follow from no other.
std::map<std::string, int> CountCodes(const std::vector<Problem>& problems) {
  std::map<std::string, int> counts;
  for (const Problem& problem : problems) {
    if (problem.follows < 0) ++counts[problem.code];
  }
  return counts;
}

// What was wrong already, follow-ons included.
bool WasThere(const std::vector<Problem>& problems, const std::string& code) {
  return std::any_of(problems.begin(), problems.end(),
                     [&code](const Problem& problem) { return problem.code == code; });
}

class Copies {
 public:
  Copies() { fs::copy(CONFGROVE_PROBLEMS, dir_.Path("."), fs::copy_options::recursive); }

  std::string Path(const fs::path& file) const { return dir_.Path(file.filename().string()); }
  std::string Read(const std::string& path) const { return dir_.ReadFile(Relative(path)); }
  void Write(const std::string& path, const std::string& bytes) const {
    dir_.WriteFile(Relative(path), bytes);
  }

 private:
  std::string Relative(const std::string& path) const {
    return fs::path(path).lexically_relative(dir_.Path()).string();
  }
  TempDir dir_;
};

TEST(Problems, EachSafeFixTakesItsProblemAwayAndBringsNone) {
  const Copies copies;
  int applied = 0;
  for (const auto& entry : fs::directory_iterator(CONFGROVE_PROBLEMS)) {
    if (entry.path().extension() != ".cfg") continue;
    const std::string file = copies.Path(entry.path());
    const std::vector<Problem> problems = Check(file);
    for (const Problem& problem : problems) {
      for (const confgrove::Fix& fix : problem.fixes) {
        SCOPED_TRACE(entry.path().filename().string() + ":" + std::to_string(problem.place.line) +
                     " " + problem.code + ": " + fix.text);
        const std::string bytes = copies.Read(fix.file);
        const std::string mended = confgrove::Apply(bytes, fix.edits);
        EXPECT_NE(mended, bytes);
        if (fix.safe == 0) continue;
        copies.Write(fix.file, mended);
        const std::vector<Problem> left = Check(file);
        copies.Write(fix.file, bytes);
        std::map<std::string, int> wanted = CountCodes(problems);
        --wanted[problem.code];
        for (const auto& [code, count] : CountCodes(left)) {
          EXPECT_TRUE(count <= wanted[code] || (code != problem.code && WasThere(problems, code)))
              << code;
        }
        ++applied;
      }
    }
  }
  EXPECT_GE(applied, 30);
}

// Where a block was to be closed, as its lines are indented.
const struct {
  const char *note, *text, *mended;
} BlockCases[] = {
    {"a name further out", "x {\n  a = 1\n\n# of y\ny {\n  b = 1\n}\n",
     "x {\n  a = 1\n}\n\n# of y\ny {\n  b = 1\n}\n"},
    {"a brace further out", "x\n{\n\ty\n\t{\n\t\ta = 1\n}\n",
     "x\n{\n\ty\n\t{\n\t\ta = 1\n\t}\n}\n"},
    {"nothing tells", "x { y { a = 1 }\n", "x { y { a = 1 }\n}\n\n"},
};

TEST(Problems, ClosesABlockWhereItsIndentationEnds) {
  const TempDir dir;
  for (const auto& c : BlockCases) {
    SCOPED_TRACE(c.note);
    dir.WriteFile("x.cfg", c.text);
    const std::vector<Problem> problems = Check(dir.Path("x.cfg"));
    ASSERT_EQ(CountCodes(problems), (std::map<std::string, int>{{"unclosed-block", 1}}));
    const std::string mended = confgrove::Apply(c.text, problems.front().fixes.front().edits);
    EXPECT_EQ(mended, c.mended);
    dir.WriteFile("x.cfg", mended.c_str());
    EXPECT_EQ(Check(dir.Path("x.cfg")).size(), 0U);
  }
}

const struct {
  const char* wanted;
  std::vector<const char*> candidates;
  const char* found;
} NearestCases[] = {
    {"brust", {"rate", "burst", "port"}, "burst"},
    {"limits.brust", {"limits.burst", "limits.rate"}, "limits.burst"},
    {"port", {"ports", "sport"}, ""},  // two are as near
    {"port", {"ports", "sport", "port"}, "port"},
    {"port", {"ports", "ports"}, "ports"},  // one that is told twice is no other
    {"ab", {"ac", "b", "abcd"}, ""},        // more than a third is another
    {"ab", {"abc"}, "abc"},
    {"", {"a", "b"}, ""},
};

TEST(Problems, NearestIsAThirdAwayAtMostAndAlone) {
  for (const auto& c : NearestCases) {
    confgrove::detail::Nearest nearest(c.wanted);
    for (const char* candidate : c.candidates) nearest.Take(candidate);
    EXPECT_EQ(nearest.Found(), c.found) << c.wanted;
  }
}

TEST(Problems, OneForTheChainOfImportsThatIsTooLong) {
  const TempDir dir;
  for (int i = 0; i < 101; ++i) {
    dir.WriteFile("a" + std::to_string(i) + ".cfg", "$import \"a" + std::to_string(i + 1) + "\"\n");
  }
  const std::vector<Problem> problems = Check(dir.Path("a0.cfg"));
  EXPECT_EQ(CountCodes(problems), (std::map<std::string, int>{{"imports-too-deep", 1}}));
}

TEST(Problems, LeavesSettingsAndTraceAlone) {
  const TempDir dir;
  dir.WriteFile("x.conf", "a = yes\n");
  TraceLog log;
  EXPECT_EQ(Check(dir.Path("x.conf")).size(), 1U);
  const Problem missing = Check(dir.Path("none")).front();
  EXPECT_EQ(missing.code + ": " + missing.text, "unreadable: the file can't be opened");
  EXPECT_EQ(log.Text(), "");
  EXPECT_EQ(ConfGetRoot(), dir.Path());
  dir.WriteFile("y.cfg", "a = 1\n");
  EXPECT_NE(Open("y"), nullptr);
}

}  // namespace
