#include <libconfig.h++>

#include "peer.h"

namespace bench {
namespace {

// An array must not mix whole numbers with others, a list may.
void AppendBody(const Node& block, std::size_t depth, std::string* out) {
  for (const Node& node : block.children) {
    if (!node.comment.empty()) out->append(depth, '\t').append("#" + node.comment + "\n");
    out->append(depth, '\t').append(node.name).append(" = ");
    switch (node.kind) {
      case Kind::Number: out->append(NumberText(node.numbers[0])); break;
      case Kind::String: out->append("\"" + node.text + "\""); break;
      case Kind::Array: out->append("(" + JoinNumbers(node.numbers, ", ") + ")"); break;
      case Kind::Block:
        out->append("{\n");
        AppendBody(node, depth + 1, out);
        out->append(depth, '\t').append("}");
    }
    out->append(";\n");
  }
}

class Libconfig : public PeerWith<libconfig::Setting*> {
 public:
  std::string Text(const Node& tree) override {
    std::string text;
    AppendBody(tree, 0, &text);
    return text;
  }

  void Load(const std::string& file) override {
    config = std::make_unique<libconfig::Config>();
    config->setAutoConvert(true);
    config->readFile(file.c_str());
  }

  double Get(std::size_t query) override {
    return bases[query]->lookup((*queries)[query].path.c_str());
  }

  void Set(std::size_t query, double value) override {
    bases[query]->lookup((*queries)[query].path.c_str()) = value;
  }

  std::size_t List() override {
    const libconfig::Setting& block = *WideBlock();
    const int count = block.getLength();
    std::size_t sum = 0;
    for (int i = 0; i < count; ++i) sum += Seen(block[i].getName());
    return sum;
  }

  void Write(const std::string& file) override { config->writeFile(file.c_str()); }
  void Destroy() override { config.reset(); }

 protected:
  libconfig::Setting* Root() override { return &config->getRoot(); }
  libconfig::Setting* Child(libconfig::Setting* block, const std::string& name) override {
    return &(*block)[name.c_str()];
  }

 private:
  std::unique_ptr<libconfig::Config> config;
};

const Registration<Libconfig> Entry("libconfig");

}  // namespace
}  // namespace bench
