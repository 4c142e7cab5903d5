// edit: makes the changes that standard input tells, all or none.
#include <algorithm>
#include <iostream>
#include <memory>

#include "commands.h"
#include "refusal.h"
#include "removal.h"
#include "set_value.h"

namespace confgrove::Tool {
namespace {

struct EditArguments {
  std::string file;
  bool existing_only = false;
  ChangeOptions options;
};

// A word of a line. In quotes it can hold blanks, and is a text.
struct Word {
  std::string text;
  bool quoted = false;
};

struct Line {
  std::size_t number = 0;
  std::vector<Word> words;
};

std::vector<Word> SplitWords(const std::string& line) {
  std::vector<Word> words;
  constexpr const char* Blanks = " \t\r";
  for (std::size_t at = 0; (at = line.find_first_not_of(Blanks, at)) != std::string::npos;) {
    const bool quoted = line[at] == '"';
    if (quoted) ++at;
    const std::size_t end = quoted ? line.find('"', at) : line.find_first_of(Blanks, at);
    RefuseUnless(!quoted || end != std::string::npos, "no quote at the end", ExitWrongCall);
    words.push_back({line.substr(at, end - at), quoted});
    at = quoted ? end + 1 : std::min(end, line.size());
  }
  return words;
}

// Runs `job`; a refusal names the line.
template <typename Job>
void AtLine(std::size_t number, const Job& job) {
  try {
    job();
  } catch (const Refusal& refusal) {
    throw Refusal("line " + std::to_string(number) + ": " + refusal.what(), refusal.code);
  }
}

std::vector<Line> ReadLines() {
  std::vector<Line> lines;
  std::string text;
  for (std::size_t number = 1; std::getline(std::cin, text); ++number) {
    AtLine(number, [&] {
      std::vector<Word> words = SplitWords(text);
      if (!words.empty() && words.front().text.front() != '#') lines.push_back({number, words});
    });
  }
  RefuseUnless(!std::cin.bad(), "standard input can't be read");
  return lines;
}

void SetAt(Change* change, const Line& line, bool existing_only) {
  RefuseUnless(line.words.size() > 2, "set takes a path and a value", ExitWrongCall);
  const std::string path = PathToChange(line.words[1].text);
  std::vector<std::string> values;
  bool quoted = false;
  for (std::size_t i = 2; i < line.words.size(); ++i) {
    values.push_back(line.words[i].text);
    quoted = quoted || line.words[i].quoted;
  }
  NoteIfNew(change, path, existing_only);
  SetValue(change, path, values, quoted ? ValueKind::String : ValueKind::Kept);
}

void MakeChange(Change* change, const Line& line, bool existing_only) {
  const std::string& command = line.words.front().text;
  if (command == "set") {
    SetAt(change, line, existing_only);
  } else if (command == "unset") {
    RefuseUnless(line.words.size() == 2, "unset takes a path", ExitWrongCall);
    Remove(change, PathToChange(line.words[1].text));
  } else if (command == "rename") {
    RefuseUnless(line.words.size() == 3, "rename takes a path and a name", ExitWrongCall);
    Rename(change, PathToChange(line.words[1].text), NameToGive(line.words[2].text));
  } else {
    throw Refusal("'" + command + "' is none of set, unset and rename", ExitWrongCall);
  }
}

int EditByLines(const EditArguments& given) {
  const std::vector<Line> lines = ReadLines();
  return ChangeFile(given.file, given.options, [&](Change* change) {
    for (const Line& line : lines) {
      AtLine(line.number, [&] { MakeChange(change, line, given.existing_only); });
    }
  });
}

}  // namespace

void AddEdit(Command* tool) {
  const auto given = std::make_shared<EditArguments>();
  Command edit =
      tool->AddCommand("edit", "Make the changes that standard input tells, all or none");
  edit.SetNotes(
      "Lines of standard input: set PATH VALUE..., unset PATH, rename PATH NAME. In double quotes "
      "a value is a text and can hold blanks. Empty lines and those that begin with # don't "
      "count.");
  edit.AddFile(&given->file);
  AddExisting(&edit, &given->existing_only);
  AddLinks(&edit, &given->options);
  AddDiff(&edit, &given->options);
  edit.SetAction([given] { return EditByLines(*given); });
}

}  // namespace confgrove::Tool
