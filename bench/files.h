// Files to measure with, and a directory of their own that goes with the process.
#ifndef CONFGROVE_BENCH_FILES_H
#define CONFGROVE_BENCH_FILES_H

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

namespace bench {

class TemporaryDirectory {
 public:
  TemporaryDirectory()
      : path(std::filesystem::temp_directory_path() /
             ("confgrove-bench-" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directory(path);
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  std::string File(const std::string& name) const { return (path / name).string(); }

 private:
  std::filesystem::path path;
};

inline void WriteFile(const std::string& path, const char* text, std::size_t size) {
  std::ofstream stream(path, std::ios::binary);
  stream.write(text, static_cast<std::streamsize>(size));
  stream.close();
  if (!stream) throw std::runtime_error("cannot write " + path);
}

// The whole file, read in one go.
inline std::string ReadFile(const std::string& path) {
  std::string text(std::filesystem::file_size(path), '\0');
  std::ifstream stream(path, std::ios::binary);
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!stream) throw std::runtime_error("cannot read " + path);
  return text;
}

}  // namespace bench

#endif
