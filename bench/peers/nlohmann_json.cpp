#include <fstream>
#include <nlohmann/json.hpp>

#include "files.h"
#include "json_text.h"
#include "peer.h"

namespace bench {
namespace {

using nlohmann::json;

class Nlohmann : public PeerWith<json*> {
 public:
  std::string Text(const Node& tree) override { return JsonText(tree); }

  void Load(const std::string& file) override {
    root = std::make_unique<json>(json::parse(std::ifstream(file)));
  }

  double Get(std::size_t query) override {
    const auto& names = (*queries)[query].names;
    return (*bases[query])[names[0]][names[1]][names[2]].get<double>();
  }

  void Set(std::size_t query, double value) override {
    const auto& names = (*queries)[query].names;
    (*bases[query])[names[0]][names[1]][names[2]] = value;
  }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : WideBlock()->items()) sum += Seen(child.key());
    return sum;
  }

  void Write(const std::string& file) override {
    const std::string text = root->dump();
    WriteFile(file, text.data(), text.size());
  }

  void Destroy() override { root.reset(); }

 protected:
  json* Root() override { return root.get(); }
  json* Child(json* block, const std::string& name) override { return &(*block)[name]; }

 private:
  std::unique_ptr<json> root;
};

const Registration<Nlohmann> Entry("nlohmann::json");

}  // namespace
}  // namespace bench
