#define RAPIDJSON_HAS_STDSTRING 1
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <stdexcept>

#include "files.h"
#include "json_text.h"
#include "peer.h"

namespace bench {
namespace {

class RapidJson : public PeerWith<rapidjson::Value*> {
 public:
  // `with_tabs`: it writes a line for each section, indented as the other libraries do it. Without
  // tabs it writes a single line, which on deep trees is a fraction of their text.
  explicit RapidJson(bool with_tabs) : indented(with_tabs) {}

  std::string Text(const Node& tree) override { return JsonText(tree); }

  void Load(const std::string& file) override {
    document = std::make_unique<rapidjson::Document>();
    if (document->Parse(ReadFile(file)).HasParseError()) {
      throw std::runtime_error("RapidJSON cannot read " + file);
    }
  }

  double Get(std::size_t query) override { return Target(query).GetDouble(); }
  void Set(std::size_t query, double value) override { Target(query).SetDouble(value); }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : WideBlock()->GetObject()) {
      sum += Seen({child.name.GetString(), child.name.GetStringLength()});
    }
    return sum;
  }

  void Write(const std::string& file) override {
    rapidjson::StringBuffer text;
    if (indented) {
      rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
      writer.SetIndent('\t', 1);
      writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
      document->Accept(writer);
    } else {
      rapidjson::Writer<rapidjson::StringBuffer> writer(text);
      document->Accept(writer);
    }
    WriteFile(file, text.GetString(), text.GetSize());
  }

  void Destroy() override { document.reset(); }

 protected:
  rapidjson::Value* Root() override { return document.get(); }
  rapidjson::Value* Child(rapidjson::Value* block, const std::string& name) override {
    return &(*block)[name];
  }

 private:
  rapidjson::Value& Target(std::size_t query) {
    const auto& names = (*queries)[query].names;
    return (*bases[query])[names[0]][names[1]][names[2]];
  }

  const bool indented;
  std::unique_ptr<rapidjson::Document> document;
};

const Registration<RapidJson> OneLine("RapidJSON DOM", false);
const Registration<RapidJson> WithTabs("RapidJSON DOM, tabs", true);

}  // namespace
}  // namespace bench
