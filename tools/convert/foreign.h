// Settings as other formats hold them, and the readers of those formats. Each reader stands on the
// library that the format is known by, and is there if that library was when the tool was built.
#ifndef CONFGROVE_TOOLS_CONVERT_FOREIGN_H
#define CONFGROVE_TOOLS_CONVERT_FOREIGN_H

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace confgrove::Tool {

constexpr int MostLevels = 1000;  // of blocks in a file of ours

// A name with what it stands for. It can have both a value and a block.
struct Setting {
  enum class Value : std::uint8_t { None, Text, Numbers };

  std::string name;  // as the file has it
  Value value = Value::None;
  std::string text;
  std::vector<double> numbers;
  bool is_array = false;  // of numbers
  bool has_block = false;
  std::vector<Setting> children;

  // Makes the next one of the block. It is good until the one after it is made.
  Setting* Add(const std::string& child) {
    has_block = true;
    children.emplace_back().name = child;
    return &children.back();
  }
};

// What the user is to hear, in the order of the file.
class Remarks {
 public:
  // `place` is the path of a setting, or a line. A refusal keeps the file from being converted.
  void Refuse(const std::string& place, const std::string& reason);
  void Note(const std::string& place, const std::string& what);

  bool refused() const { return refused_; }
  const std::vector<std::string>& lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
  bool refused_ = false;
};

// The path of what is called `name` in the setting at `path`.
std::string Below(const std::string& path, const std::string& name);

// Makes `setting` the text. `quoted` tells whether the file marks it as one; what isn't marked is a
// number if it is written the way numbers are.
void TakeText(const std::string& path, const std::string& text, bool quoted, Setting* setting,
              Remarks* remarks);

// Add a number. Whole ones are refused if no double is equal to them.
void TakeNumber(const std::string& path, double number, Setting* setting, Remarks* remarks);
template <typename Whole>
void TakeWhole(const std::string& path, Whole number, Setting* setting, Remarks* remarks) {
  const auto value = static_cast<double>(number);
  // The largest of a type can become one more than that, as a double.
  const bool fits = value < std::ldexp(1.0, std::numeric_limits<Whole>::digits);
  if (!fits || static_cast<Whole>(value) != number) {
    remarks->Refuse(path, "no number of ours is exactly " + std::to_string(number));
    return;
  }
  TakeNumber(path, value, setting, remarks);
}

// Makes `array` the numbers of its elements. Refused if they aren't numbers alone, or if there are
// none. What has neither value nor block was refused when it was read.
void TakeArray(const std::string& path, const std::vector<Setting>& elements, Setting* array,
               Remarks* remarks);

// Each reads a file into `root`. What is wrong with the file is a refusal with its line.
void ReadLibconfig(const std::string& file, Setting* root, Remarks* remarks);
void ReadInfo(const std::string& file, Setting* root, Remarks* remarks);
void ReadIni(const std::string& file, Setting* root, Remarks* remarks);
void ReadToml(const std::string& file, Setting* root, Remarks* remarks);
void ReadJson(const std::string& file, Setting* root, Remarks* remarks);

}  // namespace confgrove::Tool

#endif
