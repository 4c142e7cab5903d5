// Rewrite: changes a file without losing anything of it.
//
// The tree is changed in the library, saved to a copy, read back and compared with the tree that is
// wanted. Any difference refuses the change before the file is touched, and so does what the text
// of the file holds and no tree does. Only a copy that has passed takes the place of the file.
#ifndef CONFGROVE_TOOLS_REWRITE_H
#define CONFGROVE_TOOLS_REWRITE_H

#include <optional>
#include <string>

#include "open_file.h"
#include "platform/replace_file.h"

namespace confgrove::Tool {

// A scratch file, removed at the end.
class ScratchFile {
 public:
  ScratchFile(const std::string& prefix, const std::string& shown);  // `shown` is what it copies
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile();

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

class Rewrite {
 public:
  enum class Purpose { Replace, Preview };  // a preview writes nothing beside the file

  // Opens the file, and for a replacement keeps other runs from it.
  Rewrite(const std::string& path_of_shell, Purpose purpose);

  // To be changed alike, before Render.
  Config& config() { return *source_.config; }
  Node wanted;

  // The file as it would be written. Refuses if anything but what is wanted would differ.
  const std::string& Render(bool allow_comment_loss);

  // Puts what Render gave in the place of the file, if it differs. For a replacement only.
  void Replace();

  const OpenFile& source() const { return source_; }

 private:
  std::string SavedText(Config* config, const FileName& copy) const;
  void RefuseLosses(const Outline& written, bool allow_comment_loss) const;

  FileName name_;
  std::string target_;  // the file itself, links followed
  Purpose purpose_;
  std::optional<Platform::DirectoryLock> lock_;
  OpenFile source_;
  std::optional<ScratchFile> copy_;
  std::string text_;
};

}  // namespace confgrove::Tool

#endif
