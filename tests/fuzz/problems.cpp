// Any bytes as a configuration file: what Check finds is what a load reports.
#include <confgrove/problem.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <memory>
#include <tuple>
#include <vector>

#include "harness.h"

namespace {

// File, line, message.
using Message = std::tuple<std::string, int, std::string>;

std::vector<Message> Messages;

// Messages name a file by the name it was asked for, with an extension behind it in any case.
std::string Plain(std::string file) {
  const std::string extension = ".cfg";
  std::replace(file.begin(), file.end(), '\\', '/');
  while (file.size() >= extension.size() &&
         file.compare(file.size() - extension.size(), extension.size(), extension) == 0) {
    file.resize(file.size() - extension.size());
  }
  return file;
}

void Collect(std::int32_t /*level*/, const char* format, ...) {
  const bool is_error = std::strcmp(format, "%s(%d), error: %s") == 0;
  if (!is_error && std::strcmp(format, "%s(%d), warning: %s") != 0) return;
  va_list arguments;
  va_start(arguments, format);
  const char* const file = va_arg(arguments, const char*);
  const int line = va_arg(arguments, int);
  Messages.emplace_back(Plain(file), line, va_arg(arguments, const char*));
  va_end(arguments);
}

// Places lie in their files, and nothing follows from what follows itself.
void RequireSense(const std::vector<confgrove::Problem>& problems, std::size_t size) {
  for (const confgrove::Problem& problem : problems) {
    const bool has_place = problem.place.line > 0 && problem.place.column > 0;
    Require(has_place && !problem.text.empty(), "a place and a text");
    if (problem.place.file == problems.front().place.file) {
      Require(problem.place.offset + problem.place.length <= size, "a place in the file");
    }
    if (problem.follows < 0) continue;
    const confgrove::Problem& cause = problems[static_cast<std::size_t>(problem.follows)];
    Require(cause.follows < 0, "a cause of its own");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FreshFiles();
  WriteFile("m.cfg", std::string(data, data + size));
  const std::string path = ConfGetRoot() + std::string("m.cfg");
  Messages.clear();
  ConfSetTrace(1, Collect);
  const std::unique_ptr<Config> config(ConfCreate(path.c_str(), ConfCreateOpen, ConfNameFullPath));
  std::vector<Message> sent = std::move(Messages);
  const std::vector<confgrove::Problem> problems = confgrove::Check(path);
  Require(Messages.empty(), "silence");

  std::vector<Message> found;
  bool faulty = false;
  for (const confgrove::Problem& problem : problems) {
    const bool is_error = problem.severity == confgrove::Severity::Error;
    faulty = faulty || (is_error && problem.unread == 0);
    if (problem.unread != 0 || problem.message.empty()) continue;
    found.emplace_back(Plain(problem.place.file), problem.message_line, problem.message);
  }
  Require(faulty == (config == nullptr), "faulty if and only if refused");
  std::sort(sent.begin(), sent.end());
  std::sort(found.begin(), found.end());
  Require(found == sent, "each message in one problem");
  RequireSense(problems, size);
  return 0;
}
