// Collecting messages and showing them.
#include "messages.h"

#include <confgrove/config.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <map>
#include <vector>

#include "outline.h"
#include "platform/replace_file.h"
#include "refusal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

struct Message {
  std::string text;
  std::string label;      // of the file; "" if the message has no place in one
  std::int32_t line = 0;  // counted from 1
  bool is_warning = false;
};

std::vector<Message> Messages;

constexpr std::int32_t LevelError = 1;

void Collect(std::int32_t level, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  Message message;
  message.is_warning = std::strcmp(format, "%s(%d), warning: %s") == 0;
  if (message.is_warning || std::strcmp(format, "%s(%d), error: %s") == 0) {
    message.label = va_arg(arguments, const char*);
    message.line = va_arg(arguments, int);
    message.text = va_arg(arguments, const char*);
    Messages.push_back(message);
  } else if (level == LevelError) {  // the rest tells of progress and of lookups
    std::array<char, 1024> buffer{};
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    message.text = buffer.data();
    Messages.push_back(message);
  }
  va_end(arguments);
}

// Bold, and in a colour if a person is reading.
std::string Coloured(const char* text, const char* colour) {
  static const bool terminal = Platform::StandardErrorIsTerminal();
  return terminal ? std::string("\033[1;") + colour + "m" + text + "\033[0m" : text;
}

// The lines of the files that the messages are about, each file read once.
class SourceLines {
 public:
  std::string Get(const std::string& path, std::int32_t line) {
    auto file = files_.find(path);
    if (file == files_.end()) {
      std::string text;
      try {
        text = ReadText(path, path);
      } catch (const Refusal&) {  // gone since: the messages stand without their lines
      }
      file = files_.emplace(path, ReadOutline(text)).first;
    }
    constexpr std::size_t LongestLine = 200;
    return Printable(file->second.Line(line).substr(0, LongestLine));
  }

 private:
  std::map<std::string, Outline> files_;
};

}  // namespace

void Complain(const std::string& text) {
  if (!text.empty()) std::cerr << "confgrove: " << text << '\n';
}

void CollectMessages() { Io::SetTraceHandler(Collect); }

void ForgetMessages() { Messages.clear(); }

void ShowMessages(const FileName& file, bool with_warnings) {
  SourceLines sources;
  for (const Message& message : Messages) {
    if (message.label.empty()) {
      std::cerr << file.shown << ": " << Printable(message.text) << '\n';
      continue;
    }
    if (message.is_warning && !with_warnings) continue;
    std::cerr << file.ShownByLabel(message.label) << ':' << message.line << ": "
              << (message.is_warning ? Coloured("warning:", "35") : Coloured("error:", "31")) << ' '
              << message.text << '\n';
    const std::string line = sources.Get(file.PathByLabel(message.label), message.line);
    if (!line.empty()) std::cerr << "    " << line << '\n';
  }
  ForgetMessages();
}

std::string FirstRefusal() {
  for (const Message& message : Messages) {
    if (message.label.empty()) return message.text;
  }
  return "";
}

}  // namespace confgrove::Tool
