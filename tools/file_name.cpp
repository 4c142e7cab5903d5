// File names: from the shell to the library and back.
#include "file_name.h"

#include <confgrove/config.h>
#include <confgrove/symbols.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "refusal.h"

namespace confgrove::Tool {
namespace {

constexpr char Separator = static_cast<char>(std::filesystem::path::preferred_separator);

// Arguments are in UTF-8 where the system knows letters.
std::filesystem::path ForStandardLibrary(const std::string& path) {
  return std::filesystem::u8path(path);
}

}  // namespace

FileName::FileName(std::string path_of_shell) : shown(std::move(path_of_shell)) {
  if (Separator == '/' && shown.find('\\') != std::string::npos) {
    throw Refusal(shown + ": a path with a backslash can't be opened");  // the library turns it
  }
  const std::size_t end = shown.find_last_of(Separator == '/' ? "/" : "/\\:") + 1;
  directory = shown.substr(0, end);
  const std::string base = shown.substr(end);
  if (base.empty()) throw Refusal("'" + shown + "' names no file");
  if (!directory.empty()) {
    if (directory.back() == ':') throw Refusal(shown + ": give the directory on the drive too");
    directory.back() = Separator;
    if (directory.front() == ' ') directory.insert(0, std::string(".") + Separator);
  }

  const std::size_t point = base.rfind('.');
  const std::string stem = base.substr(0, point);
  extension = point == std::string::npos ? "." : base.substr(point);
  // The plain name first, since imports are compared with it. "./" carries a point for a name that
  // has none, and blanks in front; the stem alone carries blanks at the end.
  for (const std::string& candidate : {stem, "./" + base, "./" + stem}) {
    std::string trimmed = candidate;
    const std::string composed = Compose(candidate);
    if (Symbols::clear_blanks(trimmed) != candidate || candidate.empty()) continue;
    if (composed != base && composed != "./" + base) continue;
    name = candidate;
    return;
  }
  throw Refusal("'" + shown + "': a name without extension that ends in a blank can't be opened");
}

void FileName::Use() const { ConfSet(directory.c_str(), extension.c_str(), 2, nullptr); }

std::string FileName::Compose(const std::string& any_name) const {
  return any_name.find(extension) != std::string::npos ? any_name : any_name + extension;
}

std::string FileName::Path() const { return ForSystem(directory + Compose(name)); }

std::string FileName::ForSystem(std::string path) {
  std::replace(path.begin(), path.end(), '\\', Separator);
  return path;
}

void RequireReadable(const std::string& path, const std::string& shown) {
  std::error_code error;
  const std::filesystem::file_status status =
      std::filesystem::status(ForStandardLibrary(path), error);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw Refusal(shown + ": no such file");
  }
  if (error) throw Refusal(shown + ": " + error.message());
  if (!std::filesystem::is_regular_file(status)) throw Refusal(shown + ": not a regular file");
  if (!std::ifstream(ForStandardLibrary(path)).is_open())
    throw Refusal(shown + ": can't be opened");
}

std::string ReadBytes(const std::string& path, const std::string& shown) {
  RequireReadable(path, shown);
  std::ifstream file(ForStandardLibrary(path), std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file.is_open() || file.bad()) throw Refusal(shown + ": can't be read");
  return text;
}

}  // namespace confgrove::Tool
