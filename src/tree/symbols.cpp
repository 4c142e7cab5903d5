// Cleaning and testing text.
#include <confgrove/symbols.h>

#include <algorithm>

#include "base/letters.h"
#include "base/trace.h"
#include "tree/path.h"

namespace confgrove {
namespace {

bool Refuse(const char* fault) {
  TraceHandler(LevelError, fault);
  return false;
}

}  // namespace

bool CheckPathBegin(char first) {
  if (IsDigit(first)) return Refuse("section cannot begin with number");
  if (first == '.') return Refuse("path cannot begin with '.'");
  return true;
}

bool CheckPath(std::string_view path) {
  if (path.empty()) return true;
  if (!CheckPathBegin(path.front())) return false;
  for (const char c : path) {
    if (!IsPathLetter(c) && c != '.') return Refuse("unknown symbol in the path");
  }
  return true;
}

}  // namespace confgrove

std::string& Symbols::clear_blanks(std::string& text) {
  const std::string_view kept = confgrove::WithoutBlanks(text);
  const auto begin = static_cast<std::size_t>(kept.data() - text.data());
  text.erase(begin + kept.size());
  text.erase(0, begin);
  return text;
}

std::string& Symbols::clear_ctrl(std::string& text) {
  const auto is_control = [](char c) { return (c >= 0 && c < 0x20) || c == 0x7F; };
  text.erase(std::remove_if(text.begin(), text.end(), is_control), text.end());
  return text;
}

bool Symbols::check_path(std::string& path) { return confgrove::CheckPath(path); }
