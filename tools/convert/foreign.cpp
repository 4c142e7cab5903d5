// What the readers of other formats have in common.
#include "convert/foreign.h"

#include <charconv>
#include <system_error>

namespace confgrove::Tool {
namespace {

// The number that `text` is as a whole, in decimal; false if it is none.
bool ReadNumber(const std::string& text, double* number) {
  const char* begin = text.data();
  const char* end = begin + text.size();
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string::npos) return false;
  const auto result = std::from_chars(begin, end, *number);
  return result.ec == std::errc() && result.ptr == end;
}

std::string Shortest(double number) {
  char buffer[32];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

}  // namespace

void Remarks::Refuse(const std::string& place, const std::string& reason) {
  lines_.push_back(place + ": " + reason);
  refused_ = true;
}

void Remarks::Note(const std::string& place, const std::string& what) {
  lines_.push_back(place + ": " + what);
}

std::string Below(const std::string& path, const std::string& name) {
  if (name.empty()) return Below(path, "\"\"");
  return path.empty() || name.front() == '[' ? path + name : path + '.' + name;
}

void TakeText(const std::string& path, const std::string& text, bool quoted, Setting* setting,
              Remarks* remarks) {
  double number = 0;
  if (!quoted && ReadNumber(text, &number)) {
    const std::string written = Shortest(number);
    if (written == text) return TakeNumber(path, number, setting, remarks);
    remarks->Note(path, "kept as the text \"" + text + "\"; as a number it would be " + written);
  }
  setting->value = Setting::Value::Text;
  setting->text = text;
}

void TakeNumber(const std::string& path, double number, Setting* setting, Remarks* remarks) {
  if (!std::isfinite(number)) {
    remarks->Refuse(path, "there is no way to write an infinity or what is no number");
    return;
  }
  setting->value = Setting::Value::Numbers;
  setting->numbers.push_back(number);
}

void TakeArray(const std::string& path, const std::vector<Setting>& elements, Setting* array,
               Remarks* remarks) {
  if (elements.empty()) {
    remarks->Refuse(path, "there are no empty arrays");
    return;
  }
  for (const Setting& element : elements) {
    if (element.value == Setting::Value::None && !element.has_block) continue;
    if (element.value != Setting::Value::Numbers || element.is_array) {
      remarks->Refuse(path, "an array holds numbers alone");
      return;
    }
    array->numbers.push_back(element.numbers.front());
  }
  array->is_array = true;
  array->value = Setting::Value::Numbers;
}

}  // namespace confgrove::Tool
