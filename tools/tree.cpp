// Nodes: looking them up and comparing trees.
#include "tree.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>

#include "text.h"

namespace confgrove::Tool {
namespace {

// Takes the first name off a path.
std::string_view TakeName(std::string_view* path) {
  const std::string_view name = path->substr(0, path->find('.'));
  path->remove_prefix(std::min(name.size() + 1, path->size()));
  return name;
}

template <typename Children>
auto FindChild(Children& children, std::string_view name) {
  return std::find_if(children.begin(), children.end(),
                      [name](const Node& child) { return child.name == name; });
}

bool SameNumber(double a, double b) { return a == b && std::signbit(a) == std::signbit(b); }

bool SameValue(const Node& a, const Node& b) {
  return a.type == b.type && a.text == b.text &&
         std::equal(a.numbers.begin(), a.numbers.end(), b.numbers.begin(), b.numbers.end(),
                    SameNumber);
}

std::string Quoted(const std::string& path) { return "'" + NameToUtf8(path) + "'"; }

std::string Below(const std::string& path, const std::string& name) {
  return path.empty() ? name : path + "." + name;
}

// The numbers that differ, or the values if it isn't that.
std::string ValueChange(const Node& wanted, const Node& found) {
  const auto change = [](const std::string& a, const std::string& b) {
    return (a.empty() ? "no value" : a) + " would become " + (b.empty() ? "no value" : b);
  };
  if (wanted.type != found.type || wanted.numbers.size() != found.numbers.size() ||
      wanted.numbers.empty()) {
    return change(ValueText(wanted), ValueText(found));
  }
  const auto [a, b] = std::mismatch(wanted.numbers.begin(), wanted.numbers.end(),
                                    found.numbers.begin(), SameNumber);
  return change(NumberText(*a), NumberText(*b)) + "; six digits of a number are kept";
}

class Comparison {
 public:
  Differences differences;

  void Compare(const Node& wanted, const Node& found, const std::string& path) {
    if (!SameValue(wanted, found)) {
      differences.settings.push_back(Quoted(path) + ": " + ValueChange(wanted, found));
    }
    const std::string what = path.empty() ? "at the head" : "of " + Quoted(path);
    if (wanted.comment != found.comment) {
      differences.comments.push_back("the comment " + what + " would be lost or changed");
    }
    if (wanted.inline_comment != found.inline_comment) {
      differences.comments.push_back("the inline comment " + what + " would be lost or changed");
    }
    CompareChildren(wanted, found, path);
  }

 private:
  void CompareChildren(const Node& wanted, const Node& found, const std::string& path) {
    std::map<std::string_view, const Node*> left;
    for (const Node& child : found.children) left[child.name] = &child;
    bool same_names = wanted.children.size() == found.children.size();
    for (const Node& child : wanted.children) {
      const std::string child_path = Below(path, child.name);
      const auto entry = left.find(child.name);
      if (entry == left.end()) {
        differences.settings.push_back(
            Quoted(child_path) + " would be lost" +
            (IsBlank(child) ? ": it has neither a value nor sections below it" : ""));
        same_names = false;
        continue;
      }
      Compare(child, *entry->second, child_path);
      left.erase(entry);
    }
    for (const auto& [name, child] : left) {
      differences.settings.push_back(Quoted(Below(path, child->name)) + " would appear");
    }
    const auto same_name = [](const Node& a, const Node& b) { return a.name == b.name; };
    if (same_names && !std::equal(wanted.children.begin(), wanted.children.end(),
                                  found.children.begin(), same_name)) {
      differences.settings.push_back("the order of the sections below " + Quoted(path) +
                                     " would change");
    }
  }
};

}  // namespace

const Node* FindNode(const Node& top, const std::string& path) {
  const Node* node = &top;
  for (std::string_view rest = path; !rest.empty();) {
    const auto child = FindChild(node->children, TakeName(&rest));
    if (child == node->children.end()) return nullptr;
    node = &*child;
  }
  return node;
}

Node* MakeNode(Node* top, const std::string& path) {
  for (std::string_view rest = path; !rest.empty();) {
    const std::string_view name = TakeName(&rest);
    auto child = FindChild(top->children, name);
    if (child == top->children.end()) {
      child = top->children.emplace(top->children.end());
      child->name = name;
    }
    top = &*child;
  }
  return top;
}

void RemoveNode(Node* top, const std::string& path) {
  const std::size_t dot = path.rfind('.');
  Node* const holder = dot == std::string::npos ? top : MakeNode(top, path.substr(0, dot));
  const std::string name = path.substr(dot + 1);
  holder->children.erase(FindChild(holder->children, name));
}

bool IsBlank(const Node& node) { return node.type == SectionType::None && node.children.empty(); }

const char* KindOf(const Node& node) {
  switch (node.type) {
    case SectionType::String: return "string";
    case SectionType::Number: return node.numbers.size() == 1 ? "number" : "array";
    case SectionType::Link: return "link";
    case SectionType::None: break;
  }
  return node.children.empty() ? "none" : "block";
}

std::string ValueText(const Node& node) {
  switch (node.type) {
    case SectionType::String: return '"' + TextToUtf8(node.text) + '"';
    case SectionType::Link: return '@' + NameToUtf8(node.text);
    case SectionType::None: return "";
    case SectionType::Number: break;
  }
  if (node.numbers.size() == 1) return NumberText(node.numbers.front());
  std::string array;
  for (const double number : node.numbers) {
    array += (array.empty() ? "[" : ", ") + NumberText(number);
  }
  return array + "]";
}

Differences CompareTrees(const Node& wanted, const Node& found) {
  Comparison comparison;
  comparison.Compare(wanted, found, "");
  return comparison.differences;
}

}  // namespace confgrove::Tool
