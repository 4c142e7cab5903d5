// The copy of standard input.
#include "standard_input.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <system_error>

#include "refusal.h"

namespace confgrove::Tool {
namespace {

class Copy {
 public:
  Copy() = default;
  Copy(const Copy&) = delete;
  Copy& operator=(const Copy&) = delete;
  ~Copy() {
    std::error_code ignored;
    if (!path.empty()) std::filesystem::remove(path, ignored);
  }

  void Make() {
    std::string name;
    do {
      name = ".confgrove-" + std::to_string(std::random_device()()) + ".cfg";
    } while (std::filesystem::exists(name));
    std::ofstream out(name, std::ios::binary);
    RefuseUnless(out.is_open(), "-: no copy can be made in the working directory");
    path = name;
    std::error_code ignored;
    std::filesystem::permissions(
        path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write, ignored);
    if (std::cin.peek() != std::istream::traits_type::eof()) out << std::cin.rdbuf();
    out.close();
    RefuseUnless(!out.fail(), "-: the copy in the working directory can't be written");
  }

  std::string path;  // "" until it is made
};

Copy& TheCopy() {
  static Copy copy;
  return copy;
}

}  // namespace

std::string PathOfInput(const std::string& file) {
  if (file == StandardInput && TheCopy().path.empty()) TheCopy().Make();
  return ToKnownInput(file);
}

std::string ToKnownInput(const std::string& file) {
  return file == StandardInput && !TheCopy().path.empty() ? TheCopy().path : file;
}

std::string FromKnownInput(const std::string& path) {
  return !path.empty() && path == TheCopy().path ? StandardInput : path;
}

}  // namespace confgrove::Tool
