// Command-line options and Symbols, against a plain second telling of their rules.
#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

#include "harness.h"

namespace {

std::optional<std::string> FindOption(const std::string& line, const std::string& option) {
  const std::size_t at = (line + " ").find(" " + option + " ");
  if (option.empty() || line.empty() || at == std::string::npos) return std::nullopt;
  const std::string rest = (line + " ").substr(at + option.size() + 2);
  const char* const blanks = " \n\r\f\t";
  const std::size_t begin = rest.find_first_not_of(blanks);
  if (begin == std::string::npos) return rest;
  const std::size_t word_end = std::min(rest.find_first_of(blanks, begin), rest.size());
  const std::size_t quote = rest.find_first_of("\"'", begin);
  if (quote > word_end) return rest.substr(begin, word_end - begin);
  return rest.substr(quote + 1, rest.find_first_of("\"'", quote + 1) - quote - 1);
}

bool IsPath(const std::string& text) {
  std::string letters = "_\xA8\xB8";
  for (int c = 'a'; c <= 'z'; ++c)
    letters.append({static_cast<char>(c), static_cast<char>(c - 32)});
  for (int c = 0xC0; c <= 0xFF; ++c) letters.append(c != 0xC9 && c != 0xE9, static_cast<char>(c));
  return text.empty() || (letters.find(text.front()) != std::string::npos &&
                          text.find_first_not_of(letters + "0123456789.") == std::string::npos);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Io::SetTraceHandler(ReadMessage);
  std::string text(data, data + size), path = text, expected;
  Require(Symbols::check_path(path) == IsPath(text) && path == text, "check_path");

  const std::string option = text.c_str();
  const std::string line = text.substr(std::min(option.size() + 1, size)).c_str();
  const std::int32_t room = size == 0 ? 0 : static_cast<std::int8_t>(data[size - 1]);
  std::vector<char> out(static_cast<std::size_t>(std::max(room, 1)), '\0');
  const bool found = Io::GetCommandLineOption(line.c_str(), option.c_str(), out.data(), room);
  const std::optional<std::string> value = FindOption(line, option);
  Require(found == value.has_value() && out.data() == value.value_or("").substr(0, out.size() - 1),
          "an option");

  std::remove_copy_if(text.begin(), text.end(), std::back_inserter(expected),
                      [](unsigned char c) { return std::iscntrl(c) != 0; });
  Require(Symbols::clear_ctrl(text) == expected, "clear_ctrl");
  if (expected.find_first_not_of(' ') != std::string::npos) {
    while (expected.back() == ' ') expected.pop_back();
    while (expected.front() == ' ') expected.erase(0, 1);
  }
  Require(Symbols::clear_blanks(text) == expected, "clear_blanks");
  return 0;
}
