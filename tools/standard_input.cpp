// The copy of standard input.
#include "standard_input.h"

#include <iostream>
#include <memory>

#include "refusal.h"
#include "temporary_file.h"

namespace confgrove::Tool {
namespace {

// Null until it is made. It goes with the process.
std::unique_ptr<TemporaryFile>& TheCopy() {
  static std::unique_ptr<TemporaryFile> copy;
  return copy;
}

}  // namespace

std::string PathOfInput(const std::string& file) {
  if (file == StandardInput && TheCopy() == nullptr) {
    TheCopy() = std::make_unique<TemporaryFile>("", &std::cin);
    RefuseUnless(!TheCopy()->error(), "-: no copy can be made in the working directory: " +
                                          TheCopy()->error().message());
  }
  return ToKnownInput(file);
}

std::string ToKnownInput(const std::string& file) {
  return file == StandardInput && TheCopy() != nullptr ? TheCopy()->path() : file;
}

std::string FromKnownInput(const std::string& path) {
  return TheCopy() != nullptr && path == TheCopy()->path() ? StandardInput : path;
}

}  // namespace confgrove::Tool
