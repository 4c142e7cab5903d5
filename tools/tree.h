// Node: a section as plain data, to be shown or compared.
#ifndef CONFGROVE_TOOLS_TREE_H
#define CONFGROVE_TOOLS_TREE_H

#include <confgrove/section.h>

#include <string>
#include <vector>

namespace confgrove::Tool {

struct Node {
  std::string name;
  SectionType type = SectionType::None;
  std::string text;             // of a String; the target of a Link
  std::vector<double> numbers;  // of a Number
  std::string comment;          // each line ends in LF
  std::string inline_comment;
  std::vector<Node> children;  // in file order
};

// The node at `path` below `top`; null if there is none.
const Node* FindNode(const Node& top, const std::string& path);

// The same, made where it is missing.
Node* MakeNode(Node* top, const std::string& path);

// Removes the node at `path`, which is there.
void RemoveNode(Node* top, const std::string& path);

// Whether it has neither a value nor children: no file can hold such a section for long.
bool IsBlank(const Node& node);

// "string", "number", "array", "link"; without a value "block", or "none" if there are no children.
const char* KindOf(const Node& node);

// The value as people write it: "text", 1.5, [1, 2], @target; empty without one.
std::string ValueText(const Node& node);

// What differs between two trees, as complaints.
struct Differences {
  std::vector<std::string> settings;
  std::vector<std::string> comments;
};
Differences CompareTrees(const Node& wanted, const Node& found);

}  // namespace confgrove::Tool

#endif
