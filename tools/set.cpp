// set: gives a section a value or comments.
#include <memory>
#include <optional>

#include "commands.h"
#include "messages.h"
#include "refusal.h"
#include "set_value.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct SetArguments {
  std::string file, path;
  std::vector<std::string> values;
  bool as_string = false;
  bool as_number = false;
  bool as_link = false;
  bool existing_only = false;
  std::optional<std::string> comment, inline_comment;
  ChangeOptions options;
};

void SetComment(Change* change, const std::string& path, const std::string& comment,
                bool is_inline) {
  RefuseUnless(change->config->SetComment(comment.c_str(), path.c_str(), is_inline),
               change->name.shown + ": " + Quoted(path) + ": " + FirstRefusal());
}

int Set(const SetArguments& given) {
  const std::string path = PathToChange(given.path);
  RefuseUnless(!given.values.empty() || given.comment || given.inline_comment,
               "set needs a value or a comment", ExitWrongCall);
  RefuseUnless(given.comment != "", "an empty comment can't be stored", ExitWrongCall);
  RefuseUnless(
      !given.inline_comment || given.inline_comment->find_first_of("\r\n") == std::string::npos,
      "an inline comment is one line");
  const ValueKind kind = given.as_string   ? ValueKind::String
                         : given.as_number ? ValueKind::Number
                         : given.as_link   ? ValueKind::Link
                                           : ValueKind::Kept;
  return ChangeFile(given.file, given.options, [&](Change* change) {
    if (given.values.empty()) {
      change->RequireOwn(path);  // a comment alone makes no section
    } else {
      NoteIfNew(change, path, given.existing_only);
      SetValue(change, path, given.values, kind);
    }
    if (given.comment) SetComment(change, path, *given.comment, false);
    if (given.inline_comment) SetComment(change, path, *given.inline_comment, true);
  });
}

}  // namespace

void AddSet(Command* tool) {
  const auto given = std::make_shared<SetArguments>();
  Command set = tool->AddCommand("set", "Give a section a value or a comment");
  set.AddFile(&given->file);
  set.AddPath(&given->path);
  set.AddTexts(
      "VALUE", &given->values,
      "A value of the kind that the section has. For a new one numbers make a number or an "
      "array, @path a link, all else a text");
  const Option string_flag =
      set.AddFlag("--string", &given->as_string, "VALUE is a text whatever it looks like");
  const Option number_flag =
      set.AddFlag("--number", &given->as_number, "VALUE is a number, several are an array")
          .Exclude(string_flag);
  set.AddFlag("--link", &given->as_link, "VALUE is the path that a link leads to")
      .Exclude(string_flag)
      .Exclude(number_flag);
  set.AddText("--comment", &given->comment, "The comment above, without '#'");
  set.AddText("--inline", &given->inline_comment, "The comment behind; \"\" removes it");
  AddExisting(&set, &given->existing_only);
  AddDiff(&set, &given->options);
  set.SetAction([given] { return Set(*given); });
}

}  // namespace confgrove::Tool
