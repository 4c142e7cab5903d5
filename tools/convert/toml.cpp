// TOML files, as toml++ reads them.
#include <toml++/toml.h>

#include <algorithm>
#include <sstream>
#include <tuple>

#include "convert/foreign.h"

namespace confgrove::Tool {
namespace {

void Take(const std::string& path, const toml::node& theirs, Setting* ours, Remarks* remarks);

// toml++ keeps names in their order by letters; ours is that of the file.
void TakeTable(const std::string& path, const toml::table& theirs, Setting* ours,
               Remarks* remarks) {
  std::vector<std::pair<const toml::key*, const toml::node*>> entries;
  for (const auto& [key, node] : theirs) entries.emplace_back(&key, &node);
  const auto place = [](const auto& entry) {
    const toml::source_position& begin = entry.first->source().begin;
    return std::tie(begin.line, begin.column);
  };
  std::stable_sort(entries.begin(), entries.end(),
                   [&](const auto& a, const auto& b) { return place(a) < place(b); });
  ours->has_block = true;
  for (const auto& [key, node] : entries) {
    const std::string name(key->str());
    Take(Below(path, name), *node, ours->Add(name), remarks);
  }
}

void TakeElements(const std::string& path, const toml::array& theirs, Setting* ours,
                  Remarks* remarks) {
  std::vector<Setting> elements(theirs.size());
  for (std::size_t i = 0; i < theirs.size(); ++i) {
    Take(Below(path, "[" + std::to_string(i) + "]"), theirs[i], &elements[i], remarks);
  }
  TakeArray(path, elements, ours, remarks);
}

void Take(const std::string& path, const toml::node& theirs, Setting* ours, Remarks* remarks) {
  if (const auto* table = theirs.as_table()) return TakeTable(path, *table, ours, remarks);
  if (const auto* array = theirs.as_array()) return TakeElements(path, *array, ours, remarks);
  if (const auto* text = theirs.as_string()) {
    return TakeText(path, text->get(), true, ours, remarks);
  }
  if (const auto* whole = theirs.as_integer()) {
    return TakeWhole(path, whole->get(), ours, remarks);
  }
  if (const auto* number = theirs.as_floating_point()) {
    return TakeNumber(path, number->get(), ours, remarks);
  }
  if (const auto* truth = theirs.as_boolean()) {
    return TakeNumber(path, truth->get() ? 1 : 0, ours, remarks);
  }
  // A date or a time.
  std::ostringstream text;
  theirs.visit([&text](const auto& node) {
    using Node = std::remove_reference_t<decltype(node)>;
    if constexpr (toml::is_chronological<Node>) text << node.get();
  });
  remarks->Note(path, "kept as the text \"" + text.str() + "\"");
  TakeText(path, text.str(), true, ours, remarks);
}

}  // namespace

void ReadToml(const std::string& file, Setting* root, Remarks* remarks) {
  try {
    TakeTable("", toml::parse_file(file), root, remarks);
  } catch (const toml::parse_error& fault) {
    const auto line = fault.source().begin.line;
    const std::string place = line != 0 ? file + ":" + std::to_string(line) : file;
    remarks->Refuse(place, std::string(fault.description()));
  }
}

}  // namespace confgrove::Tool
