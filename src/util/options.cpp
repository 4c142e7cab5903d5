// Finding an option in a command line.
#include <confgrove/io.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "base/trace.h"

namespace {

using Text = std::unique_ptr<char[]>;

bool Refuse(const char* fault) {
  confgrove::TraceHandler(confgrove::LevelError, fault);
  return false;
}

// `text` between `before` and a blank; null if there is no memory.
Text Pad(std::string_view before, const char* text) {
  const std::size_t length = std::strlen(text);
  Text padded(new (std::nothrow) char[before.size() + length + 2]);
  if (padded == nullptr) return padded;
  char* end = std::copy(before.begin(), before.end(), padded.get());
  end = std::copy_n(text, length, end);
  *end++ = ' ';
  *end = '\0';
  return padded;
}

bool IsWhiteSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\f' || c == '\t'; }

// The first word of `rest`, or what stands between the first quotes, whichever quotes they are.
std::string_view FirstValue(std::string_view rest) {
  std::size_t begin = 0;
  bool in_value = false;
  bool in_quotes = false;
  std::size_t at = 0;
  for (; at < rest.size(); ++at) {
    const char c = rest[at];
    if (IsWhiteSpace(c)) {
      if (in_value && !in_quotes) break;
    } else if (!in_value) {
      in_value = true;
      begin = at;
    }
    if (c == '"' || c == '\'') {
      if (in_quotes) break;
      in_quotes = true;
      begin = at + 1;
    }
  }
  return rest.substr(begin, at - begin);
}

}  // namespace

bool Io::GetCommandLineOption(const char* line, const char* option, char* out, std::int32_t size) {
  if (line == nullptr || option == nullptr) return false;
  if (*option == '\0') return Refuse("illegal option, strlen <= 0");
  const Text pattern = Pad(" ", option);
  if (pattern == nullptr) return Refuse("out of memory");
  if (*line == '\0') return Refuse("illegal option, strlen <= 0");
  const Text padded = Pad("", line);
  if (padded == nullptr) return Refuse("out of memory");
  const char* found = std::strstr(padded.get(), pattern.get());
  if (found == nullptr) return false;

  const std::string_view value = FirstValue(found + std::strlen(pattern.get()));
  if (size > 0 && out != nullptr) {
    const std::size_t length = std::min(value.size(), static_cast<std::size_t>(size) - 1);
    std::copy_n(value.data(), length, out);
    out[length] = '\0';
  }
  return true;
}
