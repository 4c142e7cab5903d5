// Operations on up to three configurations. A step of the input is a letter, two bytes and three
// texts: what to do, the configuration, a number, the section to call, the path, a value.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

#include "harness.h"

using confgrove::RootSection;

namespace {

void Read(Section* on, const char* path) {
  const SectionType type = on->GetType(path);
  const char* text = on->GetString(path);
  if (text != nullptr) ReadMessage(0, "%s", text);
  double number = 0;
  bool truth = false;
  const std::int32_t count = on->GetDoubles(nullptr, 0, path);
  const bool is_number = on->GetDouble(&number, path) && on->GetBool(&truth, path);
  Require((type == SectionType::String) == (text != nullptr) &&
              (type == SectionType::Number) == is_number && is_number == (count > 0) &&
              truth == (number != 0),
          "a value");
  std::vector<std::int32_t> some(static_cast<std::size_t>(count + 1) / 2);
  Require(on->GetInts(some.data(), (count + 1) / 2, path) == (count + 1) / 2, "the first half");
  const std::int32_t children = on->GetSectionCount(path);
  Require((children >= 0) == (on->GetComment(path) != nullptr) &&
              on->GetSection(path, std::max(children, 0)) == nullptr,
          "a section");
  for (std::int32_t i = 0; i < children; ++i) Require(on->GetName(path, i) != nullptr, "a child");
}

class Script {
 public:
  Script(const std::uint8_t* data, std::size_t size) : rest_(data, data + size) {}
  ~Script() {
    for (const RootSection* root : roots_) Delete(root);
  }

  void Run() {
    while (!rest_.empty()) {
      Step();
      Sections seen;
      for (const RootSection* root : roots_) {
        Require(root == nullptr || root->parent_config != nullptr || IsSound(*root, &seen),
                "a sound tree");
      }
      for (const RootSection* root : roots_) Require(!root || seen.count(root) != 0, "an owner");
    }
  }

 private:
  std::uint8_t Byte() {
    const auto byte = static_cast<std::uint8_t>(*rest_.c_str());
    rest_.erase(0, 1);
    return byte;
  }

  std::string Text() {
    const std::string text = rest_.c_str();
    rest_.erase(0, text.size() + 1);
    return text;
  }

  // Takes `root`, which is about to go, and all that goes with it off the list.
  void Forget(const RootSection* root) {
    for (RootSection*& one : roots_) {
      const RootSection* above = one;
      while (above != nullptr && above != root) above = above->parent_config;
      if (above != nullptr) one = nullptr;
    }
  }

  void Delete(const RootSection* root) {
    if (root == nullptr) return;
    while (root->parent_config != nullptr) root = root->parent_config;
    Forget(root);
    delete root;
  }

  void Step() {
    const std::uint8_t letter = Byte(), place = Byte(), byte = Byte();
    const std::string at = Text(), path_text = Text(), text = Text();
    const char *path = path_text.c_str(), *value = text.c_str();
    const auto size = static_cast<std::int32_t>(text.size());
    RootSection*& root = roots_[place % roots_.size()];
    const std::string file =
        std::string(1, static_cast<char>('a' + place % roots_.size())) + ".cfg";
    if (letter == 'f') return WriteFile(file, text);
    if (letter == 'o' || root == nullptr) {
      Delete(root);
      const auto flag = static_cast<ConfCreateFlag>(letter == 'o' ? byte % 6 : 0);
      const std::string full_path = ConfGetRoot() + file;
      root = dynamic_cast<RootSection*>(ConfCreate(full_path.c_str(), flag, ConfNameFullPath));
    }
    if (root == nullptr) return;
    Section* on = root->GetSection(at.c_str(), -1);
    if (on == nullptr) on = root;
    if (place >= 128) on = on->GetTop();
    auto* top = dynamic_cast<RootSection*>(on->GetTop());
    const std::vector<double> doubles(text.begin(), text.end());
    const std::vector<std::int32_t> integers(text.begin(), text.end());
    switch (letter) {
      case 's': on->SetString(value, path); break;
      case 'l': on->SetLink(value, path); break;
      case 'd': on->SetDouble(std::atof(value), path); break;
      case 'D': on->SetDoubles(doubles.data(), size, path); break;
      case 'i': on->SetInt(byte, path); break;
      case 'I': on->SetInts(integers.data(), size, path); break;
      case 'b': on->SetBool(byte > 127, path); break;
      case 'c': on->SetComment(value, path); break;
      case 'C': on->SetComment(value, path, true); break;
      case 'n': on->SetName(value, path, static_cast<std::int8_t>(byte)); break;
      case 'm': top->Import(roots_[byte % roots_.size()]); break;
      case 'v': SaveAndLoad(top); break;
      case 't': ConfSetTrace(byte % 3, nullptr); break;
      case 'r':
        if (on == top && path_text.empty()) Forget(top);
        on->RemoveSection(path);
        break;
      default: Read(on, path);
    }
  }

  std::string rest_;                     // of the input
  std::array<RootSection*, 3> roots_{};  // owned, but for those that others have imported
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FreshFiles();
  Script(data, size).Run();
  return 0;
}
