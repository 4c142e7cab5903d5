// Runs a target over all files of a directory: the corpus, under any compiler.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "harness.h"

int main(int /*argc*/, char** argv) {
  int inputs = 0;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    std::fprintf(stderr, "%d: %s\n", ++inputs, entry.path().string().c_str());
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  return inputs > 0 ? 0 : 1;
}
