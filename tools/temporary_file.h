// TemporaryFile: a file that the tool needs for itself.
#ifndef CONFGROVE_TOOLS_TEMPORARY_FILE_H
#define CONFGROVE_TOOLS_TEMPORARY_FILE_H

#include <istream>
#include <string>
#include <system_error>

namespace confgrove::Tool {

// Nobody else can read it, and it goes when this does.
class TemporaryFile {
 public:
  // Holds all that comes from `content`. `directory` ends in a separator or is "", the working
  // directory.
  TemporaryFile(const std::string& directory, std::istream* content);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  const std::string& path() const { return path_; }

  // Why it could not be made or written.
  const std::error_code& error() const { return error_; }

 private:
  std::string path_;
  std::error_code error_;
};

}  // namespace confgrove::Tool

#endif
