#include <toml++/toml.h>

#include "files.h"
#include "peer.h"

namespace bench {
namespace {

// A table's own values stand before the tables in it, each of which has its whole path at its head.
void AppendTable(const Node& block, const std::string& path, std::string* out) {
  for (const Node& node : block.children) {
    if (node.kind == Kind::Block) continue;
    if (!node.comment.empty()) out->append("#" + node.comment + "\n");
    out->append(node.name).append(" = ");
    switch (node.kind) {
      case Kind::Number: out->append(NumberText(node.numbers[0])); break;
      case Kind::String: out->append("\"" + node.text + "\""); break;
      default: out->append("[" + JoinNumbers(node.numbers, ", ") + "]"); break;
    }
    out->append("\n");
  }
  for (const Node& node : block.children) {
    if (node.kind != Kind::Block) continue;
    out->append("\n");
    if (!node.comment.empty()) out->append("#" + node.comment + "\n");
    const std::string inner = path.empty() ? node.name : path + "." + node.name;
    out->append("[" + inner + "]\n");
    AppendTable(node, inner, out);
  }
}

class Toml : public PeerWith<toml::table*> {
 public:
  std::string Text(const Node& tree) override {
    std::string text;
    AppendTable(tree, "", &text);
    return text;
  }

  void Load(const std::string& file) override {
    root = std::make_unique<toml::table>(toml::parse(ReadFile(file)));
  }

  double Get(std::size_t query) override {
    const auto& names = (*queries)[query].names;
    return (*bases[query])[names[0]][names[1]][names[2]].value<double>().value();
  }

  void Set(std::size_t query, double value) override {
    const auto& names = (*queries)[query].names;
    (*bases[query])[names[0]][names[1]].as_table()->insert_or_assign(names[2], value);
  }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : *WideBlock()) sum += Seen(child.first.str());
    return sum;
  }

  void Write(const std::string& file) override { std::ofstream(file) << *root; }
  void Destroy() override { root.reset(); }

 protected:
  toml::table* Root() override { return root.get(); }
  toml::table* Child(toml::table* block, const std::string& name) override {
    return (*block)[name].as_table();
  }

 private:
  std::unique_ptr<toml::table> root;
};

const Registration<Toml> Entry("toml++");

}  // namespace
}  // namespace bench
