#include <pugixml.hpp>
#include <stdexcept>

#include "peer.h"

namespace bench {
namespace {

// The format has no arrays: an array is one text of numbers, which nobody takes apart.
void AppendBody(const Node& block, std::size_t depth, std::string* out) {
  for (const Node& node : block.children) {
    if (!node.comment.empty()) out->append(depth, '\t').append("<!--" + node.comment + "-->\n");
    out->append(depth, '\t').append("<" + node.name + ">");
    switch (node.kind) {
      case Kind::String: out->append(node.text); break;
      case Kind::Number:
      case Kind::Array: out->append(JoinNumbers(node.numbers, " ")); break;
      case Kind::Block:
        out->append("\n");
        AppendBody(node, depth + 1, out);
        out->append(depth, '\t');
    }
    out->append("</" + node.name + ">\n");
  }
}

class Pugixml : public PeerWith<pugi::xml_node> {
 public:
  std::string Text(const Node& tree) override {
    std::string text = "<tree>\n";
    AppendBody(tree, 1, &text);
    return text + "</tree>\n";
  }

  void Load(const std::string& file) override {
    document = std::make_unique<pugi::xml_document>();
    if (!document->load_file(file.c_str())) throw std::runtime_error("pugixml cannot read " + file);
  }

  double Get(std::size_t query) override { return Target(query).text().as_double(); }
  void Set(std::size_t query, double value) override { Target(query).text().set(value); }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const pugi::xml_node& child : WideBlock().children()) sum += Seen(child.name());
    return sum;
  }

  void Write(const std::string& file) override {
    if (!document->save_file(file.c_str())) {
      throw std::runtime_error("pugixml cannot write " + file);
    }
  }

  void Destroy() override { document.reset(); }

 protected:
  pugi::xml_node Root() override { return document->document_element(); }
  pugi::xml_node Child(pugi::xml_node block, const std::string& name) override {
    return block.child(name.c_str());
  }

 private:
  pugi::xml_node Target(std::size_t query) {
    const auto& names = (*queries)[query].names;
    return bases[query].child(names[0].c_str()).child(names[1].c_str()).child(names[2].c_str());
  }

  std::unique_ptr<pugi::xml_document> document;
};

const Registration<Pugixml> Entry("pugixml");

}  // namespace
}  // namespace bench
