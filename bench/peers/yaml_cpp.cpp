#include <yaml-cpp/yaml.h>

#include <fstream>

#include "peer.h"

namespace bench {
namespace {

void AppendBody(const Node& block, std::size_t depth, std::string* out) {
  for (const Node& node : block.children) {
    if (!node.comment.empty()) out->append(2 * depth, ' ').append("#" + node.comment + "\n");
    out->append(2 * depth, ' ').append(node.name + ":");
    switch (node.kind) {
      case Kind::Number: out->append(" " + NumberText(node.numbers[0]) + "\n"); break;
      case Kind::String: out->append(" \"" + node.text + "\"\n"); break;
      case Kind::Array: out->append(" [" + JoinNumbers(node.numbers, ", ") + "]\n"); break;
      case Kind::Block: out->append("\n"); AppendBody(node, depth + 1, out);
    }
  }
}

// An assignment to a YAML::Node changes the tree it points into; here nodes are copied only.
class Yaml : public PeerWith<YAML::Node> {
 public:
  std::string Text(const Node& tree) override {
    std::string text;
    AppendBody(tree, 0, &text);
    return text;
  }

  void Load(const std::string& file) override {
    root = std::make_unique<YAML::Node>(YAML::LoadFile(file));
  }

  double Get(std::size_t query) override {
    const auto& names = (*queries)[query].names;
    const YAML::Node& base = bases[query];
    return base[names[0]][names[1]][names[2]].as<double>();
  }

  void Set(std::size_t query, double value) override {
    const auto& names = (*queries)[query].names;
    bases[query][names[0]][names[1]][names[2]] = value;
  }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : WideBlock()) sum += Seen(child.first.Scalar());
    return sum;
  }

  void Write(const std::string& file) override { std::ofstream(file) << *root; }

  void Destroy() override {
    bases.clear();  // they share ownership
    root.reset();
  }

 protected:
  YAML::Node Root() override { return *root; }
  YAML::Node Child(YAML::Node block, const std::string& name) override {
    return static_cast<const YAML::Node&>(block)[name];
  }

 private:
  std::unique_ptr<YAML::Node> root;
};

const Registration<Yaml> Entry("yaml-cpp");

}  // namespace
}  // namespace bench
