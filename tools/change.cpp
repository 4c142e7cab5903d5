// Opening a file to change it, and saving it.
#include "change.h"

#include <confgrove/save_in_place.h>

#include <utility>

#include "diff.h"
#include "messages.h"
#include "open_file.h"
#include "refusal.h"
#include "removal.h"
#include "text.h"

namespace confgrove::Tool {

namespace {

void CollectLinks(Section* section, std::vector<Section*>* links) {
  if (OwnType(section) == SectionType::Link) links->push_back(section);
  const std::int32_t count = section->GetSectionCount("");
  for (std::int32_t i = 0; i < count; ++i) CollectLinks(section->GetSection("", i), links);
}

}  // namespace

Change::Change(FileName file_name) : name(std::move(file_name)), config(LoadConfig(name)) {}

const std::vector<Section*>& Change::Links() {
  if (!links_) {
    links_.emplace();
    CollectLinks(config.get(), &*links_);
  }
  return *links_;
}

Section* Change::Own(const std::string& path) const {
  Section* const found = FindSection(config.get(), path.c_str());
  return found != nullptr && ConfigOf(found) == config.get() ? found : nullptr;
}

Section* Change::RequireOwn(const std::string& path) const {
  if (Section* const own = Own(path)) return own;
  const bool imported = FindSection(config.get(), path.c_str()) != nullptr;
  throw Refusal(name.shown + ": " + Quoted(path) +
                (imported ? " stands in an imported file" : " isn't there"));
}

void AddDiff(Command* command, ChangeOptions* options) {
  command->AddFlag("--diff", &options->diff, "Write nothing; print what would change");
}

void AddExisting(Command* command, bool* existing_only) {
  command->AddFlag("--existing", existing_only, "Refuse a path that isn't there");
}

void AddLinks(Command* command, ChangeOptions* options) {
  command->AddFlag("--links", &options->remove_links,
                   "Remove the links too that lead to what is removed");
}

int ChangeFile(const std::string& file, const ChangeOptions& options,
               const std::function<void(Change*)>& make) {
  constexpr int MostAttempts = 1000;
  for (int attempt = 1;; ++attempt) {
    Change change{FileName(file)};
    make(&change);
    SettleLinks(&change, options.remove_links);
    SettleEmptyBlocks(&change);
    Config* const config = change.config.get();
    const std::string before = options.diff ? ReadBytes(change.name.Path(), file) : "";
    const SaveResult result = options.diff ? PreviewSave(config) : SaveInPlace(config);
    if (!result && result.file_changed && attempt < MostAttempts) continue;
    if (!result) throw Refusal(ReasonOf(result, file));
    for (const std::string& note : change.notes)
      Complain(std::string(file).append(": ").append(note));
    if (options.diff) PrintDiff(file, before, Apply(before, result.edits));
    return ExitDone;
  }
}

std::string PathToChange(const std::string& argument) {
  std::string path = PathFromShell(argument);
  RefuseUnless(IsPath(path), "'" + argument + "' is no path of sections");
  return path;
}

std::string NameToGive(const std::string& argument) {
  std::string name = PathFromShell(argument);
  RefuseUnless(IsName(name), "'" + argument + "' is no name of a section");
  return name;
}

std::string Quoted(const std::string& path) { return "'" + NameToUtf8(path) + "'"; }

bool IsAtOrBelow(const std::string& inner, const std::string& outer) {
  return inner.compare(0, outer.size(), outer) == 0 &&
         (inner.size() == outer.size() || inner[outer.size()] == '.');
}

}  // namespace confgrove::Tool
