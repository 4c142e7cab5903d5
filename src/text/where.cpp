// Where: the places of sections in their files.
#include <confgrove/inspect.h>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/platform.h"
#include "text/file_text.h"
#include "text/positions.h"
#include "tree/node.h"

namespace confgrove {
namespace {

// One file, read anew.
class FreshFile {
 public:
  explicit FreshFile(const FileOrigin& origin) : path_(origin.path) {
    if (!Platform::ReadBytes(path_, &bytes_)) return;
    file_.emplace(bytes_, origin);
    if (file_->root() == nullptr) return;
    positions_.emplace(file_->text, file_->record, bytes_);
    for (std::int32_t i = 1; i <= file_->record.section_count(); ++i) {
      numbers_.emplace(&file_->Node(i), i);
    }
  }

  // The place of the section of that path.
  Place Find(const std::vector<std::string_view>& names) const {
    Place place;
    place.file = path_;
    const RealSection* node = positions_ ? file_->root() : nullptr;
    for (const std::string_view name : names) {
      if (node != nullptr) node = node->FindChild(name);
    }
    const auto number = numbers_.find(node);
    if (number == numbers_.end()) return place;
    const Span span = file_->At(number->second).name;
    place.offset = positions_->OnDisk(span.begin);
    place.length = span.end - span.begin;
    place.line = positions_->Line(span.begin);
    place.column = positions_->Column(span.begin);
    return place;
  }

 private:
  const std::string path_;
  std::string bytes_;
  std::optional<FileText> file_;        // none if it can't be read
  std::optional<Positions> positions_;  // none if it is faulty
  std::unordered_map<const RealSection*, std::int32_t> numbers_;
};

}  // namespace

std::vector<Place> Where(const std::vector<Section*>& sections) {
  std::vector<Place> places(sections.size());
  std::unordered_map<const RootSection*, std::vector<std::size_t>> by_root;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    by_root[RootOf(NodeOf(sections[i]))].push_back(i);
  }
  for (const auto& [root, wanted] : by_root) {
    const FreshFile file(root->File());
    for (const std::size_t i : wanted) places[i] = file.Find(NamesOf(NodeOf(sections[i])));
  }
  return places;
}

Place Where(Section* section) { return Where(std::vector<Section*>{section}).front(); }

Place Where(Section* from, const char* path) {
  Section* found = FindSection(from, path);
  return found != nullptr ? Where(found) : Place();
}

}  // namespace confgrove
