// The text that the JSON libraries read. JSON has no comments.
#ifndef CONFGROVE_BENCH_PEERS_JSON_TEXT_H
#define CONFGROVE_BENCH_PEERS_JSON_TEXT_H

#include <string>

#include "tree_generator.h"

namespace bench {

inline void AppendObject(const Node& block, std::size_t depth, std::string* out) {
  out->append("{");
  for (const Node& node : block.children) {
    out->append(&node == block.children.data() ? "\n" : ",\n");
    out->append(depth + 1, '\t').append("\"" + node.name + "\": ");
    switch (node.kind) {
      case Kind::Number: out->append(NumberText(node.numbers[0])); break;
      case Kind::String: out->append("\"" + node.text + "\""); break;
      case Kind::Array: out->append("[" + JoinNumbers(node.numbers, ", ") + "]"); break;
      case Kind::Block: AppendObject(node, depth + 1, out); break;
    }
  }
  out->append("\n").append(depth, '\t').append("}");
}

inline std::string JsonText(const Node& tree) {
  std::string text;
  AppendObject(tree, 0, &text);
  return text;
}

}  // namespace bench

#endif
