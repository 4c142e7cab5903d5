// Names of files.
#include "file_name.h"

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

FileName::FileName(std::string path_of_shell) : path(std::move(path_of_shell)), shown(path) {
  if (Separator == '/' && path.find('\\') != std::string::npos) {
    throw Refusal(shown + ": a path with a backslash can't be opened");  // the library turns it
  }
  const std::size_t end = path.find_last_of(Separator == '/' ? "/" : "/\\:") + 1;
  if (end == path.size()) throw Refusal("'" + shown + "' names no file");
  if (end > 0 && path[end - 1] == ':') {
    throw Refusal(shown + ": give the directory on the drive too");
  }
  if (path.back() == ' ' && path.find('.', end) == std::string::npos) {
    throw Refusal("'" + shown + "': a name without extension that ends in a blank can't be opened");
  }
}

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
