// JSON files, as nlohmann::json reads them.
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "convert/foreign.h"

namespace confgrove::Tool {
namespace {

using Theirs = nlohmann::ordered_json;

void Take(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks);

void TakeObject(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  ours->has_block = true;
  for (const auto& [name, child] : theirs.items()) {
    Take(Below(path, name), child, ours->Add(name), remarks);
  }
}

void TakeElements(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  std::vector<Setting> elements(theirs.size());
  for (std::size_t i = 0; i < theirs.size(); ++i) {
    Take(Below(path, "[" + std::to_string(i) + "]"), theirs[i], &elements[i], remarks);
  }
  TakeArray(path, elements, ours, remarks);
}

void Take(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  switch (theirs.type()) {
    case Theirs::value_t::object: TakeObject(path, theirs, ours, remarks); break;
    case Theirs::value_t::array: TakeElements(path, theirs, ours, remarks); break;
    case Theirs::value_t::string:
      TakeText(path, theirs.get_ref<const std::string&>(), true, ours, remarks);
      break;
    case Theirs::value_t::boolean:
      TakeNumber(path, theirs.get<bool>() ? 1 : 0, ours, remarks);
      break;
    case Theirs::value_t::number_integer:
      TakeWhole(path, theirs.get<std::int64_t>(), ours, remarks);
      break;
    case Theirs::value_t::number_unsigned:
      TakeWhole(path, theirs.get<std::uint64_t>(), ours, remarks);
      break;
    case Theirs::value_t::number_float:
      TakeNumber(path, theirs.get<double>(), ours, remarks);
      break;
    default: remarks->Refuse(path, "there is no empty value"); break;
  }
}

// Hears of each name while a file is read, since of two that are equal the reader drops the first;
// and keeps what is nested deeper than our files can be from being read.
class NameWatch {
 public:
  explicit NameWatch(Remarks* remarks) : remarks_(remarks) {}

  // Whether the element counts.
  bool operator()(int depth, Theirs::parse_event_t event, const Theirs& parsed) {
    if (depth > MostLevels) {
      too_deep_ = true;
      return false;
    }
    if (event == Theirs::parse_event_t::object_start) {
      names_.emplace_back();
    } else if (event == Theirs::parse_event_t::object_end) {
      names_.pop_back();
    } else if (event == Theirs::parse_event_t::key) {
      const std::string name = parsed.get<std::string>();
      if (!names_.back().insert(name).second) {
        remarks_->Refuse(name, "stands twice in one object");
      }
    }
    return true;
  }

  bool too_deep() const { return too_deep_; }

 private:
  bool too_deep_ = false;
  std::vector<std::set<std::string>> names_;  // of each object that is open
  Remarks* remarks_;                          // not owned
};

}  // namespace

void ReadJson(const std::string& file, Setting* root, Remarks* remarks) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return remarks->Refuse(file, "cannot be read");
  NameWatch watch(remarks);
  try {
    const Theirs theirs = Theirs::parse(
        stream, [&watch](int depth, Theirs::parse_event_t event, const Theirs& parsed) {
          return watch(depth, event, parsed);
        });
    if (watch.too_deep()) return remarks->Refuse(file, "nesting too deep");
    if (!theirs.is_object()) return remarks->Refuse(file, "the whole of it must be an object");
    TakeObject("", theirs, root, remarks);
  } catch (const nlohmann::json::exception& fault) {
    const std::string text = fault.what();  // behind the name of the exception, in brackets
    remarks->Refuse(file, text.substr(text.find("] ") + 2));
  }
}

}  // namespace confgrove::Tool
