// Saves in place. The input is a file, the byte 0x1F and changes: of each a letter, a byte and two
// texts, what to do, a number, the path, a value.
#include <confgrove/save_in_place.h>

#include <cstdlib>
#include <memory>

#include "harness.h"

using confgrove::RootSection;

namespace {

constexpr char EndOfFile = 0x1F;

std::string TakeText(std::string* rest) {
  const std::string text = rest->c_str();
  rest->erase(0, text.size() + 1);
  return text;
}

void Import(Config* config) {
  std::unique_ptr<Config> other(ConfCreate("other", ConfCreateOpen));
  if (config->Import(other.get())) static_cast<void>(other.release());
}

void Change(Config* config, std::string rest) {
  while (rest.size() > 1) {
    const char letter = rest[0];
    const auto number = static_cast<std::int8_t>(rest[1]);
    rest.erase(0, 2);
    const std::string path_text = TakeText(&rest), text = TakeText(&rest);
    const char *path = path_text.c_str(), *value = text.c_str();
    const std::vector<double> doubles(text.begin(), text.end());
    switch (letter) {
      case 's': config->SetString(value, path); break;
      case 'l': config->SetLink(value, path); break;
      case 'd': config->SetDouble(std::atof(value), path); break;
      case 'D': config->SetDoubles(doubles.data(), static_cast<int>(text.size()), path); break;
      case 'i': config->SetInt(number, path); break;
      case 'c': config->SetComment(value, path); break;
      case 'C': config->SetComment(value, path, true); break;
      case 'n': config->SetName(value, path, path_text.empty() && number < 0 ? 0 : number); break;
      case 'm': Import(config); break;
      case 'r':
        if (!path_text.empty()) config->RemoveSection(path);
        break;
      default: config->GetType(path);
    }
  }
}

// Whether a comment of the tree is what the file has, or its end: the beginning may stand apart.
bool SameComment(std::string_view in_tree, std::string_view in_file) {
  return in_tree.size() <= in_file.size() &&
         in_file.substr(in_file.size() - in_tree.size()) == in_tree;
}

void RequireSame(const confgrove::RealSection& tree, const confgrove::RealSection& file) {
  Require(tree.child_count() == file.child_count(), "as many sections");
  for (std::int32_t i = 0; i < tree.child_count(); ++i) {
    const auto &a = *tree.children->at(i), &b = *file.children->at(i);
    Require(a.name() == b.name() && a.type == b.type, "the same section");
    Require(a.inline_comment().view() == b.inline_comment().view(), "its inline comment");
    Require(SameComment(a.comment().view(), b.comment().view()), "its comment");
    if (a.type == SectionType::Number) {
      const auto &x = a.numbers(), &y = b.numbers();
      Require(std::equal(x.begin(), x.end(), y.begin(), y.end()), "its numbers");
    } else {
      Require(a.text().view() == b.text().view(), "its text");
    }
    RequireSame(a, b);
  }
}

void FormatTwice(const std::string& bytes) {
  WriteFile("b.cfg", bytes);
  const std::string path = ConfGetRoot() + std::string("b.cfg");
  if (!confgrove::FormatFile(path)) return;
  Require(confgrove::FormatFile(path).outcome == confgrove::SaveOutcome::Unchanged,
          "nothing to format a second time");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FreshFiles();
  const std::string input(data, data + size);
  const std::string before = input.substr(0, input.find(EndOfFile));
  WriteFile("a.cfg", before);
  const std::unique_ptr<Config> config(ConfCreate("a", ConfCreateOpen));
  if (config == nullptr) return 0;
  Require(confgrove::SaveInPlace(config.get()).outcome == confgrove::SaveOutcome::Unchanged,
          "nothing to do at first");
  FormatTwice(before);
  if (before.size() < size) Change(config.get(), input.substr(before.size() + 1));
  if (config->GetName("") != std::string("a")) return 0;

  const confgrove::SaveResult result = confgrove::SaveInPlace(config.get());
  const std::string after = FileBytes("a.cfg");
  if (!result) return Require(after == before && !result.reason.empty(), "a refusal"), 0;
  Require(after == confgrove::Apply(before, result.edits), "the edits and nothing else");
  Require(confgrove::SaveInPlace(config.get()).outcome == confgrove::SaveOutcome::Unchanged,
          "nothing to do a second time");
  const std::unique_ptr<Config> again(ConfCreate("a", ConfCreateOpen));
  Require(again != nullptr, "a file that can be read");
  RequireSame(static_cast<RootSection&>(*config), static_cast<RootSection&>(*again));
  return 0;
}
