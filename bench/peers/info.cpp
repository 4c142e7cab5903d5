#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "peer.h"

namespace bench {
namespace {

using boost::property_tree::ptree;

// The format has no arrays: an array is one text of numbers, which nobody takes apart.
void AppendBody(const Node& block, std::size_t depth, std::string* out) {
  for (const Node& node : block.children) {
    if (!node.comment.empty()) out->append(depth, '\t').append(";" + node.comment + "\n");
    out->append(depth, '\t').append(node.name);
    switch (node.kind) {
      case Kind::Number: out->append(" " + NumberText(node.numbers[0])); break;
      case Kind::String: out->append(" \"" + node.text + "\""); break;
      case Kind::Array: out->append(" \"" + JoinNumbers(node.numbers, " ") + "\""); break;
      case Kind::Block:
        out->append("\n").append(depth, '\t').append("{\n");
        AppendBody(node, depth + 1, out);
        out->append(depth, '\t').append("}");
    }
    out->append("\n");
  }
}

class Info : public PeerWith<ptree*> {
 public:
  std::string Text(const Node& tree) override {
    std::string text;
    AppendBody(tree, 0, &text);
    return text;
  }

  void Load(const std::string& file) override {
    root = std::make_unique<ptree>();
    boost::property_tree::read_info(file, *root);
  }

  double Get(std::size_t query) override {
    return bases[query]->get<double>((*queries)[query].path);
  }

  void Set(std::size_t query, double value) override {
    bases[query]->put((*queries)[query].path, value);
  }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : *WideBlock()) sum += Seen(child.first);
    return sum;
  }

  void Write(const std::string& file) override { boost::property_tree::write_info(file, *root); }
  void Destroy() override { root.reset(); }

 protected:
  ptree* Root() override { return root.get(); }
  ptree* Child(ptree* block, const std::string& name) override { return &block->get_child(name); }

 private:
  std::unique_ptr<ptree> root;
};

const Registration<Info> Entry("Boost.PropertyTree INFO");

}  // namespace
}  // namespace bench
