// Files of our own.
#include "temporary_file.h"

#include <filesystem>
#include <fstream>

#include "platform/console.h"

namespace confgrove::Tool {

TemporaryFile::TemporaryFile(const std::string& directory, std::istream* content)
    : error_(Platform::MakeOwnFile(directory + ".confgrove-", ".cfg", &path_)) {
  if (error_) return;
  std::ofstream out(std::filesystem::u8path(path_), std::ios::binary);
  if (content->peek() != std::istream::traits_type::eof()) out << content->rdbuf();
  out.close();
  if (out.fail()) error_ = std::make_error_code(std::errc::io_error);
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove(std::filesystem::u8path(path_), ignored);
}

}  // namespace confgrove::Tool
