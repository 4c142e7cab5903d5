// The yardstick: what a reader costs that does nothing but look at each byte once and then make
// each section a heap block with a field of its own for everything, children in a std::map. It
// takes the tree from the generator. Without the scan, what those blocks cost alone.
#include <cstdint>
#include <map>
#include <stdexcept>

#include "files.h"
#include "peer.h"

namespace bench {
namespace {

struct HeapNode {
  HeapNode() = default;
  HeapNode(const HeapNode&) = delete;
  HeapNode& operator=(const HeapNode&) = delete;
  virtual ~HeapNode() {
    for (auto& child : children) delete child.second;
  }

  std::string value;
  std::vector<double> numbers;
  Kind kind = Kind::Block;
  std::int32_t index = 0;
  std::int32_t child_count = 0;
  HeapNode* parent = nullptr;
  std::string name;
  std::string comment;
  std::string inline_comment;
  std::map<std::string, HeapNode*> children;
  std::int32_t width = 0;
  bool read_only = false;
};

void AddChildren(const Node& from, HeapNode* to) {
  for (const Node& node : from.children) {
    auto* made = new HeapNode;
    made->name = node.name;
    made->kind = node.kind;
    made->value = node.text;
    made->numbers = node.numbers;
    (node.comment_inline ? made->inline_comment : made->comment) = node.comment;
    made->index = to->child_count++;
    made->parent = to;
    to->children[node.name] = made;
    AddChildren(node, made);
  }
}

// Looks at each byte once, in one of three states, and gives the depth and the count of lines and
// values, so that none of it can be left out.
std::size_t Scan(const std::string& text) {
  enum { Code, Quoted, Comment } state = Code;
  std::size_t depth = 0;
  std::size_t count = 0;
  for (const char byte : text) {
    switch (byte) {
      case '"':
        if (state != Comment) state = state == Code ? Quoted : Code;
        break;
      case '#':
        if (state == Code) state = Comment;
        break;
      case '\n':
        state = Code;
        ++count;
        break;
      case '{': depth += state == Code; break;
      case '}': depth -= state == Code; break;
      case '=': count += state == Code; break;
      default: break;
    }
  }
  return depth + count;
}

class HeapNodes : public PeerWith<HeapNode*> {
 public:
  explicit HeapNodes(bool reads_file) : scans(reads_file) {}

  std::string Text(const Node& from) override {
    tree = &from;
    return ConfigurationText(from);
  }

  void Load(const std::string& file) override {
    if (scans && Scan(ReadFile(file)) == 0) throw std::runtime_error("nothing in " + file);
    root = std::make_unique<HeapNode>();
    AddChildren(*tree, root.get());
  }

  bool IsYardstick() const override { return true; }

  double Get(std::size_t query) override { return Target(query)->numbers[0]; }
  void Set(std::size_t query, double value) override { Target(query)->numbers.assign(1, value); }

  std::size_t List() override {
    std::size_t sum = 0;
    for (const auto& child : WideBlock()->children) sum += child.second->name.size();
    return sum;
  }

  void Write(const std::string&) override {}
  void Destroy() override { root.reset(); }

 protected:
  HeapNode* Root() override { return root.get(); }
  HeapNode* Child(HeapNode* block, const std::string& name) override {
    return block->children.at(name);
  }

 private:
  HeapNode* Target(std::size_t query) {
    HeapNode* node = bases[query];
    for (const std::string& name : (*queries)[query].names) node = node->children.at(name);
    return node;
  }

  const bool scans;
  const Node* tree = nullptr;
  std::unique_ptr<HeapNode> root;
};

const Registration<HeapNodes> Entry("heap nodes, no reading", false);
const Registration<HeapNodes> ScanEntry("scan and heap nodes", true);

}  // namespace
}  // namespace bench
