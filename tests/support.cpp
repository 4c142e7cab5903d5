#include "support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <optional>
#include <random>
#include <sstream>
#include <utility>
#include <vector>

#include "systems.h"

namespace {

TraceLog* CurrentLog = nullptr;
TempDir* CurrentDir = nullptr;
int CurrentLevel = 0;

// All at once: a loop over the bytes would be the slowest of what the tests do.
std::string BytesOf(const std::ifstream& file) {
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

std::string Comment(const char* before, std::string text) {
  std::replace(text.begin(), text.end(), '\n', '|');
  return text.empty() ? "" : before + ("(" + text) + ")";
}

std::string Value(Section* section) {
  if (const char* string = section->GetString("")) return "=\"" + std::string(string) + '"';
  std::vector<double> numbers(static_cast<std::size_t>(section->GetDoubles(nullptr, 0, "")));
  section->GetDoubles(numbers.data(), static_cast<std::int32_t>(numbers.size()), "");
  std::ostringstream list;
  list.precision(15);
  for (double number : numbers) list << (list.tellp() == 0 ? "" : ",") << number;
  return numbers.empty() ? "" : numbers.size() == 1 ? "=" + list.str() : "=[" + list.str() + "]";
}

}  // namespace

TraceLog::TraceLog(int level) {
  CurrentLog = this;
  ConfSetTrace(CurrentLevel = level, Receive);
}

TraceLog::~TraceLog() {
  CurrentLog = nullptr;
  ConfSetTrace(CurrentLevel = 0, nullptr);
}

std::string TraceLog::Take() { return std::exchange(text_, ""); }

void TraceLog::Receive(std::int32_t level, const char* format, ...) {
  if (CurrentLog == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  const int size = std::vsnprintf(nullptr, 0, format, arguments);
  va_end(arguments);
  std::string message(static_cast<std::size_t>(size), ' ');
  va_start(arguments, format);
  std::vsnprintf(message.data(), message.size() + 1, format, arguments);
  va_end(arguments);
  const std::string directory = CurrentDir == nullptr ? "" : CurrentDir->Path();
  const std::size_t at = directory.empty() ? std::string::npos : message.find(directory);
  if (at != std::string::npos) message.erase(at, directory.size());
  CurrentLog->text_ += std::to_string(level) + " " + message + "\n";
}

TempDir::TempDir()
    : path_(std::filesystem::temp_directory_path() /
            ("confgrove_" + std::to_string(std::random_device()()))),
      outer_(std::exchange(CurrentDir, this)) {
  std::filesystem::create_directory(path_);
  ConfSet(Path().c_str(), nullptr, CurrentLevel, nullptr);
}

TempDir::~TempDir() {
  CurrentDir = outer_;
  ConfSet(outer_ == nullptr ? "" : outer_->Path().c_str(), nullptr, CurrentLevel, nullptr);
  RemoveAll(path_);
}

void TempDir::WriteFile(const std::string& name, const std::string& bytes) const {
  EXPECT_TRUE(std::ofstream(path_ / name, std::ios::binary) << bytes) << name;
}

std::string TempDir::ReadFile(const std::string& name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return BytesOf(file);
}

ConfigPtr Open(const std::string& name, ConfCreateFlag flag) {
  return ConfigPtr(ConfCreate(name.c_str(), flag));
}

ConfigPtr ParseText(const std::string& name, const std::string& text) {
  std::optional<TempDir> own;
  if (CurrentDir == nullptr) own.emplace();
  CurrentDir->WriteFile(name + ".cfg", text);
  return Open(name);
}

std::string DumpTree(Section* section) {
  if (section == nullptr) return "null";
  // On a root the comment is the file's; on any other section it stands with the name.
  std::string all = section->GetTop() == section ? Comment("", section->GetComment("")) : "";
  for (std::int32_t i = 0; Section* child = section->GetSection("", i); i++) {
    const std::string body = DumpTree(child);
    all += (i == 0 ? "" : " ") + Comment("", child->GetComment("")) + child->GetName("");
    all += Value(child) + (body.empty() ? "" : "{" + body + "}");
    all += Comment("#", child->GetComment("", true));
  }
  return all;
}

std::string Saved(Config* config) {
  static const bool saved_before = [] {
    const TempDir dir;
    const ConfigPtr first = Open("first", ConfCreateNew);
    return first->SetInt(1, "a") && first->Save();
  }();
  EXPECT_TRUE(saved_before && config->Save());
  std::ifstream file(config->GetFileName(), std::ios::binary);
  return WithoutLineEnds(BytesOf(file));
}
