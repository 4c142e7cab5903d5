// Reading one file, for ConfCreate and for each $import.
#include "parser/load.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/settings.h"
#include "base/trace.h"
#include "lexer/text_source.h"
#include "parser/conf_parser.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

constexpr std::size_t TreeBytesOfTextByte = 3;  // as a rule

// Whether the file that comes next is to be recorded.
bool RecordsNext(const Load& load) {
  return load.records || (load.records_first && load.recorded.empty());
}

// What is read: a text, or what a file has.
struct Input {
  std::string_view text;
  TextSource* source;
  std::uint64_t size;
};

std::unique_ptr<RootSection> Parse(Load* load, const std::string& name, const Input& input,
                                   Record* record, bool read_only, std::int32_t depth) {
  load->files.Append(name);
  auto root = std::make_unique<RootSection>(name, read_only);
  root->pool.Foresee(static_cast<std::size_t>(input.size) * TreeBytesOfTextByte);
  ConfParser(input.text, input.source, root.get(), depth, load, record).Parse();
  if (load->errors != 0) return nullptr;
  return root;
}

}  // namespace

bool FileNames::Contains(std::string_view name) {
  known_.insert(names_.begin() + static_cast<std::ptrdiff_t>(known_.size()), names_.end());
  return known_.count(name) != 0;
}

std::unique_ptr<RootSection> LoadFile(Load* load, const std::string& name, bool read_only,
                                      std::int32_t depth) {
  const std::string file_name = ComposeFileName(name);
  TextSource source(ComposeFullPath(file_name));
  if (source.is_open()) {
    const Input input{"", &source, source.stamp().size};
    auto root = RecordsNext(*load) ? ParseFile(load, name, source.Rest(), read_only, depth)
                                   : Parse(load, name, input, nullptr, read_only, depth);
    if (root != nullptr) root->stamp = source.stamp();
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
  const Input input{text, nullptr, text.size()};
  if (!RecordsNext(*load)) return Parse(load, name, input, nullptr, read_only, depth);
  RecordedFile& recorded = load->recorded.emplace_back();
  recorded.name = name;
  recorded.path = ComposeFullPath(ComposeFileName(name));
  recorded.label = FileLabel(name);
  recorded.found = true;
  recorded.record.ReserveFor(text.size());
  auto root = Parse(load, name, input, &recorded.record, read_only, depth);
  if (load->records) recorded.text = text;
  return root;
}

}  // namespace confgrove
