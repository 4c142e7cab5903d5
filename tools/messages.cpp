// Collecting messages and showing them.
#include "messages.h"

#include <confgrove/config.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <vector>

#include "refusal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

std::vector<std::string> Messages;

constexpr std::int32_t LevelError = 1;

// The rest tells of progress, of lookups, or of places in files.
void Collect(std::int32_t level, const char* format, ...) {
  if (level != LevelError || std::strncmp(format, "%s(%d)", 6) == 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  std::array<char, 1024> buffer{};
  std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
  Messages.emplace_back(buffer.data());
  va_end(arguments);
}

}  // namespace

void Complain(const std::string& text) {
  if (!text.empty()) std::cerr << "confgrove: " + text + '\n';  // whole, beside other runs
}

void RefuseUnless(bool condition, const std::string& reason, ExitCode code) {
  if (!condition) throw Refusal(reason, code);
}

void RefuseMissing(const std::string& file, const std::string& path) {
  throw Refusal(file + (IsPath(path) ? ": no section '" : ": no path of sections: '") +
                NameToUtf8(path) + "'");
}

void CollectMessages() { Io::SetTraceHandler(Collect); }

void ForgetMessages() { Messages.clear(); }

std::string FirstRefusal() { return Messages.empty() ? "" : Messages.front(); }

}  // namespace confgrove::Tool
