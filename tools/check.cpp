// check: shows all problems of files, and mends what can be mended without a guess.
#include <algorithm>
#include <array>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <utility>

#include "commands.h"
#include "file_name.h"
#include "platform/console.h"
#include "refusal.h"
#include "render.h"
#include "standard_input.h"

namespace confgrove::Tool {
namespace {

struct CheckArguments {
  std::vector<std::string> files;
  std::string format = "text";
  std::string colour = "auto";
  bool all = false;
  bool fix = false;
};

bool WantsColour(const std::string& choice) {
  if (choice != "auto") return choice == "always";
  return MayColour() && Platform::StandardOutputIsTerminal();
}

// Edits of one file by their offsets, apart from each other.
using EditsByOffset = std::map<std::size_t, Edit>;

// Whether nothing of what is known touches the edit.
bool IsApart(const EditsByOffset& known, const Edit& edit) {
  const auto next = known.lower_bound(edit.offset);
  if (next != known.end() && next->first <= edit.offset + edit.length) return false;
  if (next == known.begin()) return true;
  const Edit& before = std::prev(next)->second;
  return before.offset + before.length < edit.offset;
}

// The edits of the safe fixes, by file, in order and apart from each other.
std::map<std::string, std::vector<Edit>> SafeEdits(const Problems& problems, std::size_t* fixes) {
  std::map<std::string, EditsByOffset> known;
  for (const Problem& problem : problems) {
    const auto fix = std::find_if(problem.fixes.begin(), problem.fixes.end(),
                                  [](const Fix& one) { return one.safe != 0; });
    if (problem.follows >= 0 || fix == problem.fixes.end()) continue;
    EditsByOffset& of_file = known[fix->file];
    const bool apart = std::all_of(fix->edits.begin(), fix->edits.end(),
                                   [&](const Edit& edit) { return IsApart(of_file, edit); });
    if (!apart) continue;
    for (const Edit& edit : fix->edits) of_file.emplace(edit.offset, edit);
    ++*fixes;
  }
  std::map<std::string, std::vector<Edit>> edits;
  for (const auto& [file, of_file] : known) {
    for (const auto& [offset, edit] : of_file) edits[file].push_back(edit);
  }
  return edits;
}

// Applies the safe fixes. What comes to light then is mended too.
Problems Mend(const std::string& file, Problems problems) {
  constexpr int MostRounds = 10;
  std::size_t fixes = 0;
  for (int round = 0; round < MostRounds; ++round) {
    const std::size_t before = fixes;
    for (const auto& [path, edits] : SafeEdits(problems, &fixes)) {
      const SaveResult result = EditFile(path, ReadBytes(path, path).size(), edits);
      if (!result) throw Refusal(path + ": " + result.reason);
    }
    if (fixes == before) break;
    problems = confgrove::Check(file);
  }
  if (fixes > 0) {
    std::cerr << file + ": " + std::to_string(fixes) + (fixes == 1 ? " fix" : " fixes") +
                     " applied\n";
  }
  return problems;
}

class Printer {
 public:
  explicit Printer(const CheckArguments& given)
      : given_(given), colour_(WantsColour(given.colour)) {}

  void Print(const Problems& problems) {
    if (given_.format == "sarif") {
      const std::size_t first = sarif_.size();
      sarif_.insert(sarif_.end(), problems.begin(), problems.end());
      for (std::size_t i = first; i < sarif_.size(); ++i) {
        if (sarif_[i].follows >= 0) sarif_[i].follows += static_cast<std::int32_t>(first);
      }
      return;
    }
    SourceFiles sources;
    for (std::size_t i = 0; i < problems.size(); ++i) {
      if (given_.format == "json") {
        std::cout << AsJson(problems, i, &sources);
      } else if (problems[i].follows < 0 || given_.all) {
        PrintForPeople(problems, i, &sources);
      }
    }
  }

  void Finish() const {
    if (given_.format == "sarif") std::cout << AsSarif(sarif_);
    if (shown_ > MostShown) std::cout << "and " << shown_ - MostShown << " more\n";
  }

 private:
  void PrintForPeople(const Problems& problems, std::size_t number, SourceFiles* sources) {
    if (++shown_ > MostShown) return;
    std::cout << (given_.format == "short" ? AsShort(problems, number)
                                           : AsText(problems, number, sources, colour_));
  }

  const CheckArguments& given_;
  bool colour_;
  std::size_t shown_ = 0;
  Problems sarif_;
};

int Check(const CheckArguments& given) {
  const bool reads_input = std::count(given.files.begin(), given.files.end(), StandardInput) > 0;
  RefuseUnless(!given.fix || !reads_input, "-: standard input can't be fixed", ExitWrongCall);
  int result = ExitDone;
  Printer printer(given);
  for (const std::string& file : given.files) {
    try {
      const std::string path = PathOfInput(file);
      static_cast<void>(FileName(path));  // refuses what the library can't open
      RequireReadable(path, file);
      Problems problems = ProblemsOf(file);
      if (given.fix) problems = Mend(file, std::move(problems));
      printer.Print(problems);
      const bool faulty = std::any_of(problems.begin(), problems.end(), [](const Problem& one) {
        return one.severity == Severity::Error && one.unread == 0;
      });
      if (faulty) result = ExitRefused;
    } catch (const Refusal& refusal) {
      result = ExitRefused;
      Complain(refusal.what());
    }
  }
  printer.Finish();
  return result;
}

}  // namespace

void AddCheck(Command* tool) {
  const auto given = std::make_shared<CheckArguments>();
  Command check = tool->AddCommand("check", "Show all problems of files");
  check.AddFiles(&given->files);
  check.AddText("--format", &given->format, "text, short, json or sarif")
      .TakeOneOf({"text", "short", "json", "sarif"});
  check.AddText("--color", &given->colour, "always, never, or auto: on a terminal")
      .TakeOneOf({"always", "never", "auto"});
  check.AddFlag("--all", &given->all, "Show what follows from other problems, too");
  check.AddFlag("--fix", &given->fix, "Apply the fixes that need no guess to the files");
  check.SetAction([given] { return Check(*given); });
}

}  // namespace confgrove::Tool
