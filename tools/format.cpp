// format: gives files their canonical layout.
#include <confgrove/save_in_place.h>
#include <memory>

#include "commands.h"
#include "diff.h"
#include "open_file.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

struct FormatArguments {
  std::vector<std::string> files;
  bool check = false;
  bool diff = false;
};

int FormatOne(const std::string& file, const FormatArguments& given) {
  const FileName name(file);
  LoadConfig(name);  // so that a faulty file is refused as by the other commands
  const std::string path = name.Path();
  const bool preview = given.check || given.diff;
  const std::string before = given.diff ? ReadBytes(path, file) : "";
  const SaveResult result = preview ? PreviewFormat(path) : FormatFile(path);
  RefuseUnless(static_cast<bool>(result), ReasonOf(result, file));
  if (given.diff) PrintDiff(file, before, Apply(before, result.edits));
  if (!given.check || result.outcome == SaveOutcome::Unchanged) return ExitDone;
  Complain(file + ": not in canonical form");
  return ExitRefused;
}

int Format(const FormatArguments& given) {
  int result = ExitDone;
  for (const std::string& file : given.files) {
    try {
      if (FormatOne(file, given) != ExitDone) result = ExitRefused;
    } catch (const Refusal& refusal) {
      result = ExitRefused;
      Complain(refusal.what());
    }
  }
  return result;
}

}  // namespace

void AddFormat(Command* tool) {
  const auto given = std::make_shared<FormatArguments>();
  Command format = tool->AddCommand("format", "Give files their canonical form");
  format.AddFiles(&given->files);
  format.AddFlag("--check", &given->check, "Write nothing; exit code 1 if a file isn't canonical");
  format.AddFlag("--diff", &given->diff, "Write nothing; print what would change");
  format.SetAction([given] { return Format(*given); });
}

}  // namespace confgrove::Tool
