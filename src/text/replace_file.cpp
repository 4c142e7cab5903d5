// Replacing a file by way of a copy that stands beside it.
#include "text/replace_file.h"

#include <algorithm>

namespace confgrove {
namespace {

std::string Because(const char* what, const std::error_code& error) {
  return error ? what + (": " + error.message()) : "";
}

}  // namespace

FileReplacement::FileReplacement(const std::string& path)
    : links_(Platform::FollowLinks(path, &directory_, &name_)), lock_(directory_) {}

// Of a copy: hidden, beside the file, and not too long with the letters that follow.
std::string FileReplacement::PrefixOfCopy() const {
  constexpr std::size_t Longest = 200;  // in bytes, of the 255 that systems allow
  std::size_t size = std::min(name_.size(), Longest);
  while (size < name_.size() && size > 0 && (name_[size] & 0xC0) == 0x80) size--;  // in a character
  return directory_ + "." + name_.substr(0, size) + ".";
}

// "", or why the file can't be replaced. A missing one can.
std::string FileReplacement::Check(bool* exists) const {
  if (links_) return Because("can't be opened", links_);
  const std::error_code error = Platform::CheckRegular(Target());
  *exists = error != std::errc::no_such_file_or_directory;
  if (error == std::errc::invalid_argument) return "isn't a regular file";
  return *exists ? Because("can't be opened", error) : "";
}

std::string FileReplacement::Read(std::string* bytes, Platform::FileStamp* stamp) {
  bool exists = false;
  if (std::string problem = Check(&exists); !problem.empty()) return problem;
  bytes->clear();
  *stamp = {};
  std::error_code error;
  if (exists && !Platform::ReadBytes(Target(), bytes, stamp, &error)) {
    return Because("can't be read", error);
  }
  read_ = *stamp;
  return "";
}

std::string FileReplacement::Put(std::string_view bytes) {
  bool exists = false;
  if (std::string problem = Check(&exists); !problem.empty()) return problem;
  has_changed_ = read_ && *read_ != Platform::GetStamp(Target());
  if (has_changed_) {
    return "another program has changed it meanwhile";
  }
  std::error_code error = exists ? Platform::CheckWritable(Target()) : std::error_code();
  if (error) return Because("can't be written", error);
  std::string copy;
  error = Platform::CreateUnique(PrefixOfCopy(), &copy, !exists);
  if (error) return Because("a copy beside it can't be made", error);
  error = Platform::WriteFile(copy, bytes);
  std::string problem = Because("a copy beside it can't be written", error);
  if (!error) problem = Because("can't be replaced", Platform::PutInPlace(copy, Target()));
  if (problem.empty()) {
    if (read_) read_ = Platform::GetStamp(Target());
  } else if (!exists || Platform::GetStamp(Target()).exists) {
    Platform::RemoveFile(copy);
  } else {
    problem += "; its new text stands in " + copy;
  }
  return problem;
}

}  // namespace confgrove
