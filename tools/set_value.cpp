// What the words of a call mean as a value.
#include "set_value.h"

#include <algorithm>
#include <numeric>

#include "messages.h"
#include "nearest.h"
#include "refusal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct Value {
  SectionType type = SectionType::None;
  std::string text;  // or the target of a link
  std::vector<double> numbers;
};

// The words of an array: without the brackets and commas that `list` shows it with, if it has them.
std::vector<std::string> ArrayWords(const std::vector<std::string>& words) {
  std::string text = words.front();
  for (std::size_t i = 1; i < words.size(); ++i) text += ' ' + words[i];
  if (text.size() < 2 || text.front() != '[' || text.back() != ']') return words;
  std::vector<std::string> inner;
  constexpr const char* Between = ", \t";
  for (std::size_t end = 1; end < text.size() - 1;) {
    const std::size_t begin = text.find_first_not_of(Between, end);
    end = text.find_first_of(", \t]", begin);
    if (begin < text.size() - 1) inner.push_back(text.substr(begin, end - begin));
  }
  return inner;
}

// Null unless all the words are numbers.
std::optional<Value> ReadNumbers(const std::vector<std::string>& words) {
  Value value;
  value.type = SectionType::Number;
  for (const std::string& word : ArrayWords(words)) {
    const std::optional<double> number = ParseNumber(word);
    if (!number) return std::nullopt;
    value.numbers.push_back(*number);
  }
  if (value.numbers.empty()) return std::nullopt;
  return value;
}

Value ReadText(const std::vector<std::string>& words) {
  RefuseUnless(words.size() == 1, "several values make an array, and must all be numbers",
               ExitWrongCall);
  RefuseUnless(words.front().find_first_of("\"\r\n") == std::string::npos,
               "a text can't hold a double quote or a line end");
  return {SectionType::String, words.front(), {}};
}

Value ReadLink(const std::vector<std::string>& words) {
  RefuseUnless(words.size() == 1, "a link has one target", ExitWrongCall);
  const std::string& word = words.front();
  Value link{SectionType::Link, PathFromShell(word.substr(word.substr(0, 1) == "@" ? 1 : 0)), {}};
  RefuseUnless(IsPath(link.text), "'" + word + "' is no link; --string makes a text of it",
               ExitWrongCall);
  return link;
}

bool LooksLikeLink(const std::vector<std::string>& words) {
  return words.size() == 1 && words.front().substr(0, 1) == "@";
}

// A number that begins with 0 is a code or a telephone: as a number it would lose the 0.
bool HasLeadingZero(const std::string& word) {
  const std::size_t first = word.find_first_not_of("+-");
  return first + 1 < word.size() && word[first] == '0' && word[first + 1] >= '0' &&
         word[first + 1] <= '9';
}

Value Infer(const std::vector<std::string>& words) {
  if (LooksLikeLink(words)) return ReadLink(words);
  const std::optional<Value> numbers = ReadNumbers(words);
  const bool is_code = words.size() == 1 && HasLeadingZero(words.front());
  return numbers && !is_code ? *numbers : ReadText(words);
}

// The value in the kind that the section has.
Value ReadAs(SectionType kind, const std::string& what, const std::vector<std::string>& words) {
  switch (kind) {
    case SectionType::String:
      RefuseUnless(words.size() == 1,
                   what + " is a text; --number makes an array of numbers of it");
      return ReadText(words);
    case SectionType::Link:
      RefuseUnless(LooksLikeLink(words), what +
                                             " is a link; --link, --number or --string says "
                                             "what it becomes");
      return ReadLink(words);
    case SectionType::Number: break;
    case SectionType::None: return Infer(words);
  }
  const std::optional<Value> numbers = ReadNumbers(words);
  const std::string shown = words.size() == 1 ? "'" + words.front() + "' is none" : "these aren't";
  RefuseUnless(numbers.has_value(), what + " holds numbers, and " + shown +
                                        "; --string makes a text of it" +
                                        (LooksLikeLink(words) ? ", --link a link" : ""));
  return *numbers;
}

bool Store(const Value& value, const char* path, Config* config) {
  switch (value.type) {
    case SectionType::String: return config->SetString(value.text.c_str(), path);
    case SectionType::Link: return config->SetLink(value.text.c_str(), path);
    case SectionType::Number:
      return config->SetDoubles(value.numbers.data(),
                                static_cast<std::int32_t>(value.numbers.size()), path);
    case SectionType::None: break;
  }
  return false;
}

}  // namespace

void SetValue(Change* change, const std::string& path, const std::vector<std::string>& words,
              ValueKind kind) {
  Value value;
  switch (kind) {
    case ValueKind::String: value = ReadText(words); break;
    case ValueKind::Link: value = ReadLink(words); break;
    case ValueKind::Number: {
      const std::optional<Value> numbers = ReadNumbers(words);
      RefuseUnless(numbers.has_value(), "--number takes numbers alone", ExitWrongCall);
      value = *numbers;
      break;
    }
    case ValueKind::Kept: {
      Section* const section = change->Own(path);
      const std::string what = change->name.shown + ": " + Quoted(path);
      value = ReadAs(section == nullptr ? SectionType::None : OwnType(section), what, words);
      break;
    }
  }
  RefuseUnless(Store(value, path.c_str(), change->config.get()),
               change->name.shown + ": " + Quoted(path) + ": " + FirstRefusal());
  change->ForgetLinks();
}

void NoteIfNew(Change* change, const std::string& path, bool existing_only) {
  if (change->Own(path) != nullptr) return;
  constexpr std::size_t MostNotes = 20;
  if (++change->new_sections > MostNotes && !existing_only) {
    const std::string more = std::to_string(change->new_sections - MostNotes) + " more are new";
    if (change->new_sections == MostNotes + 1) change->notes.emplace_back();
    change->notes.back() = more;
    return;
  }
  std::string note = Quoted(path) + " is new";
  if (Section* const imported = FindSection(change->config.get(), path.c_str())) {
    note += " here and hides the one in " + FileName::ForSystem(OwnFile(ConfigOf(imported)));
  } else {
    const std::string nearest = NearestPath(change->config.get(), path);
    if (!nearest.empty()) note += "; the nearest that is there is " + Quoted(nearest);
  }
  RefuseUnless(!existing_only, change->name.shown + ": " + note);
  change->notes.push_back(note);
}

}  // namespace confgrove::Tool
