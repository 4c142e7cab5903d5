// Configuration trees to measure with: seeded, so the same on every machine, and known to no
// library. From a tree come its text, and paths to ask for.
#ifndef CONFGROVE_BENCH_TREE_GENERATOR_H
#define CONFGROVE_BENCH_TREE_GENERATOR_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

enum class Kind { Block, String, Number, Array };

// One section. The root of a tree is a Node without a name and is no section.
struct Node {
  std::string name;  // 3 to 20 bytes, unlike those of its siblings
  Kind kind = Kind::Block;
  std::string text;             // of a String: 5 to 40 bytes
  std::vector<double> numbers;  // 1 of a Number, 4 to 16 of an Array; 6 significant digits at most
  std::string comment;          // one line, without '#'; "" is none
  bool comment_inline = false;  // behind the value, not above the section
  std::vector<Node> children;   // of a Block
};

// How many sections make up a text of that size.
constexpr std::size_t Sections8K = 260;
constexpr std::size_t Sections1M = 28338;
constexpr std::size_t Sections4M = 112302;
constexpr std::size_t Sections16M = 449207;
constexpr std::size_t Sections64M = 1796828;

// A tree of that many sections, 10 at least: 45 % numbers, 25 % strings, 10 % arrays, 20 % blocks
// of 2 to 20 sections and a few larger ones; comments on 15 %.
Node MakeTree(std::size_t sections);

// A block `outer` with a block `inner` that holds that many values.
Node MakeWideTree(std::size_t siblings);

// That many blocks, each within the one before, with four values in each.
Node MakeDeepTree(std::size_t levels);

// The sections below `node`.
std::size_t CountSections(const Node& node);

// The tree as a configuration file.
std::string ConfigurationText(const Node& root);

// A number in its shortest form, without an exponent.
std::string NumberText(double number);

// Numbers in that form with `separator` between them.
std::string JoinNumbers(const std::vector<double>& numbers, const char* separator);

// A number three names below a block: the block by its names from the root, none for the root.
struct Query {
  std::vector<std::string> base;
  std::array<std::string, 3> names;
  std::string path;  // the three names, joined by dots
  double value;
};

// Of a number by all names that lead to it from the root, three at least.
Query MakeQuery(std::vector<std::string> names, double value);

// Numbers drawn at random from all that a tree has at three levels or more, in random order.
std::vector<Query> MakeQueries(const Node& root, std::size_t count);

}  // namespace bench

#endif
