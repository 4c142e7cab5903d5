// Reading one file, for ConfCreate and for each $import.
#include "parser/load.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/settings.h"
#include "base/trace.h"
#include "parser/conf_parser.h"
#include "platform/platform.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

constexpr std::size_t TreeBytesOfTextByte = 3;  // as a rule

}  // namespace

void FileNames::Append(const std::string& name) {
  names_.push_back(name);
  known_.insert(names_.back());
}

std::unique_ptr<RootSection> LoadFile(Load* load, const std::string& name, bool read_only,
                                      std::int32_t depth) {
  const std::string file_name = ComposeFileName(name);
  std::string text;
  Platform::FileStamp stamp;
  if (Platform::ReadFile(ComposeFullPath(file_name), &text, &stamp)) {
    auto root = ParseFile(load, name, text, read_only, depth);
    if (root != nullptr) root->stamp = stamp;
    return root;
  }
  load->files.Append(name);
  if (load->records) {
    load->recorded.push_back({name, ComposeFullPath(file_name), FileLabel(name), false, {}, {}});
  }
  if (TraceLevel > 1) TraceHandler(LevelError, "cannot open import file:%s", file_name.c_str());
  return nullptr;
}

std::unique_ptr<RootSection> ParseFile(Load* load, const std::string& name, const std::string& text,
                                       bool read_only, std::int32_t depth) {
  load->files.Append(name);
  RecordedFile* recorded = nullptr;
  if (load->records || (load->records_first && load->recorded.empty())) {
    recorded = &load->recorded.emplace_back();
    recorded->name = name;
    recorded->path = ComposeFullPath(ComposeFileName(name));
    recorded->label = FileLabel(name);
    recorded->found = true;
    constexpr std::size_t MostAtFirst = 1 << 18;
    recorded->record.pieces.reserve(std::min(text.size() / 4, MostAtFirst));
  }
  auto root = std::make_unique<RootSection>(name, read_only);
  root->pool.Foresee(text.size() * TreeBytesOfTextByte);
  ConfParser(text, root.get(), depth, load, recorded != nullptr ? &recorded->record : nullptr)
      .Parse();
  if (load->records) recorded->text = text;
  if (load->errors != 0) return nullptr;
  return root;
}

}  // namespace confgrove
