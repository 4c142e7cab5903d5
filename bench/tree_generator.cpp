// Draws trees and renders them. Only the generator's raw bits are used: the distributions of the
// standard library differ from one library to the next.
#include "tree_generator.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <random>
#include <stdexcept>
#include <unordered_set>

namespace bench {
namespace {

constexpr const char* Words[] = {
    "port",   "host",  "path",  "file",  "size",  "rate",   "limit", "level", "retry", "user",
    "group",  "cache", "log",   "table", "queue", "index",  "color", "width", "delay", "scale",
    "offset", "gain",  "input", "route", "proxy", "server", "timer", "mode",  "depth", "style",
    "plugin", "axis",  "max",   "min",   "step",  "count",  "theme", "probe", "frame", "motor"};
constexpr const char* Joints[] = {" ", " ", "/", "_", ".", ": "};

class Dice {
 public:
  // 0 to `limit` - 1.
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(bits() % limit); }
  bool Percent(std::size_t chance) { return Below(100) < chance; }
  template <class List>
  auto Pick(const List& list) {
    return list[Below(std::size(list))];
  }
  template <class Item>
  void Shuffle(std::vector<Item>* items) {
    for (std::size_t i = items->size(); i > 1; --i) std::swap((*items)[i - 1], (*items)[Below(i)]);
  }

 private:
  std::mt19937_64 bits{20240607};
};

// `size` bytes of words, none of which any of the formats would have to escape.
std::string Prose(std::size_t size, Dice* dice) {
  std::string text = dice->Pick(Words);
  while (text.size() < size) text.append(dice->Pick(Joints)).append(dice->Pick(Words));
  text.resize(size);
  if (text.back() == ' ') text.back() = 's';
  return text;
}

double SomeNumber(Dice* dice) {
  static constexpr std::size_t Limits[] = {2, 10, 100, 1000, 10000, 65536, 1000000};
  static constexpr double Divisors[] = {1, 1, 1, 10, 100};
  const auto whole = static_cast<double>(dice->Below(dice->Pick(Limits)));
  const double number = whole / dice->Pick(Divisors);
  return dice->Percent(10) && number > 0 ? -number : number;
}

// A section that isn't a block. It gets its name once its siblings are known.
Node MakeValue(Dice* dice) {
  Node node;
  const std::size_t share = dice->Below(80);
  node.kind = share < 45 ? Kind::Number : share < 70 ? Kind::String : Kind::Array;
  if (node.kind == Kind::String) {
    node.text = Prose(5 + std::min(dice->Below(36), dice->Below(36)), dice);
  } else {
    node.numbers.resize(node.kind == Kind::Number ? 1 : 4 + dice->Below(13));
    for (double& number : node.numbers) number = SomeNumber(dice);
  }
  return node;
}

// Comments and names of the children of `block`, now that they are all there.
void FinishBlock(Node* block, Dice* dice) {
  std::unordered_set<std::string> taken;
  for (Node& child : block->children) {
    if (dice->Percent(15)) {
      child.comment = " " + Prose(8 + dice->Below(24), dice);
      child.comment_inline = child.kind != Kind::Block && dice->Percent(33);
    }
    if (!child.name.empty()) continue;
    std::string name = dice->Pick(Words);
    if (dice->Percent(50)) name.append("_").append(dice->Pick(Words));
    if (dice->Percent(50) && name.size() < 8) name.append("_").append(dice->Pick(Words));
    const std::string stem = name;
    for (std::size_t i = taken.size(); !taken.insert(name).second; ++i) {
      name = stem + "_" + std::to_string(i);
    }
    child.name = name;
  }
}

void AppendBody(const Node& block, std::size_t depth, std::string* out) {
  bool first = true;
  for (const Node& node : block.children) {
    const bool above = !node.comment.empty() && !node.comment_inline;
    if (above && !first) out->append("\n");
    if (above) out->append(depth, '\t').append("#").append(node.comment).append("\n");
    first = false;
    out->append(depth, '\t').append(node.name);
    switch (node.kind) {
      case Kind::Block: break;
      case Kind::String: out->append(" = \"").append(node.text).append("\""); break;
      case Kind::Number: out->append(" = ").append(NumberText(node.numbers[0])); break;
      case Kind::Array: out->append(" = [").append(JoinNumbers(node.numbers, ",")).append("]");
    }
    if (node.comment_inline) out->append(" #").append(node.comment);
    out->append("\n");
    if (node.kind != Kind::Block) continue;
    out->append(depth, '\t').append("{\n");
    AppendBody(node, depth + 1, out);
    out->append(depth, '\t').append("}\n");
  }
}

// A section and where its parent stands in the same list.
struct Place {
  const Node* node;
  std::size_t parent;
  std::size_t depth;  // 0 is the root
};

void ListPlaces(const Node& node, std::size_t parent, std::size_t depth, std::vector<Place>* out) {
  const std::size_t here = out->size();
  out->push_back({&node, parent, depth});
  for (const Node& child : node.children) ListPlaces(child, here, depth + 1, out);
}

Query QueryOf(const std::vector<Place>& places, std::size_t target) {
  std::vector<std::string> names;
  for (std::size_t i = target; i != 0; i = places[i].parent) names.push_back(places[i].node->name);
  std::reverse(names.begin(), names.end());
  return MakeQuery(std::move(names), places[target].node->numbers[0]);
}

}  // namespace

Node MakeTree(std::size_t sections) {
  Dice dice;
  std::vector<Node> blocks(1 + sections / 5);  // the first one is the root
  for (Node& block : blocks) {
    block.children.push_back(MakeValue(&dice));
    block.children.push_back(MakeValue(&dice));
  }
  // The values left over come in runs, so that the sizes of blocks vary.
  for (std::size_t left = sections - (blocks.size() - 1) - 2 * blocks.size(); left > 0;) {
    const std::size_t run = std::min(left, 1 + dice.Below(dice.Percent(8) ? 16 : 4));
    Node& block = blocks[dice.Below(blocks.size())];
    for (std::size_t i = 0; i < run; ++i) block.children.push_back(MakeValue(&dice));
    left -= run;
  }
  // Back to front: each block is complete before it moves into one that stands before it.
  for (std::size_t i = blocks.size(); i-- > 0;) {
    dice.Shuffle(&blocks[i].children);
    FinishBlock(&blocks[i], &dice);
    if (i == 0) break;
    Node& parent = blocks[i / 12 + dice.Below(i / 4 - i / 12 + 1)];
    parent.children.push_back(std::move(blocks[i]));
  }
  return std::move(blocks[0]);
}

Node MakeWideTree(std::size_t siblings) {
  Dice dice;
  Node inner;
  inner.name = "inner";
  inner.children.push_back(MakeValue(&dice));
  while (inner.children.size() < siblings) inner.children.push_back(MakeValue(&dice));
  FinishBlock(&inner, &dice);
  Node outer;
  outer.name = "outer";
  outer.children.push_back(std::move(inner));
  Node root;
  root.children.push_back(std::move(outer));
  return root;
}

Node MakeDeepTree(std::size_t levels) {
  Dice dice;
  Node block;
  for (std::size_t level = 0; level <= levels; ++level) {
    Node outer;
    if (level > 0) outer.children.push_back(std::move(block));
    for (int i = 0; i < 4; ++i) outer.children.push_back(MakeValue(&dice));
    dice.Shuffle(&outer.children);
    FinishBlock(&outer, &dice);
    block = std::move(outer);
  }
  return block;
}

std::size_t CountSections(const Node& node) {
  return std::accumulate(node.children.begin(), node.children.end(), node.children.size(),
                         [](std::size_t sum, const Node& n) { return sum + CountSections(n); });
}

std::string ConfigurationText(const Node& root) {
  std::string text;
  AppendBody(root, 0, &text);
  return text;
}

std::string NumberText(double number) {
  char digits[32];
  const auto end = std::to_chars(digits, std::end(digits), number, std::chars_format::general, 6);
  return std::string(digits, end.ptr);
}

std::string JoinNumbers(const std::vector<double>& numbers, const char* separator) {
  std::string text;
  for (double number : numbers) {
    if (!text.empty()) text.append(separator);
    text.append(NumberText(number));
  }
  return text;
}

Query MakeQuery(std::vector<std::string> names, double value) {
  if (names.size() < 3) throw std::runtime_error("a query takes three names");
  Query query;
  std::move(names.end() - 3, names.end(), query.names.begin());
  names.resize(names.size() - 3);
  query.base = std::move(names);
  query.path = query.names[0] + "." + query.names[1] + "." + query.names[2];
  query.value = value;
  return query;
}

std::vector<Query> MakeQueries(const Node& root, std::size_t count) {
  std::vector<Place> places;
  ListPlaces(root, 0, 0, &places);
  std::vector<std::size_t> targets;
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (places[i].depth >= 3 && places[i].node->kind == Kind::Number) targets.push_back(i);
  }
  if (targets.empty()) throw std::runtime_error("the tree has no number three levels down");
  Dice dice;
  std::vector<Query> queries(count);
  for (Query& query : queries) query = QueryOf(places, dice.Pick(targets));
  return queries;
}

}  // namespace bench
