// What the library tests share: message logs, temporary directories, trees as text.
#ifndef CONFGROVE_TESTS_SUPPORT_H
#define CONFGROVE_TESTS_SUPPORT_H

#include <confgrove/confgrove.h>

#include <filesystem>
#include <memory>
#include <string>

// Collects every message of the library while it lives, at the trace level it is given. One lives
// at a time; without one messages are dropped, and the level is 0.
class TraceLog {
 public:
  explicit TraceLog(int trace_level = 2);
  ~TraceLog();

  // One line for each message: its level, a blank and its text, without the path of the TempDir:
  // "1 t.cfg(1), error: syntax error\n", "7 section 't': cannot find subsection: x\n".
  const std::string& Text() const { return text_; }
  std::string Take();  // the same, and forgets it

 private:
  static void Receive(std::int32_t level, const char* format, ...);

  std::string text_;
};

// A fresh directory. While it lives it is the root directory, and the extension is ".cfg"; at its
// end the root directory is the one before it.
class TempDir {
 public:
  TempDir();
  ~TempDir();

  // Names are relative to the directory and hold the extension. Bytes go as they are.
  std::string Path(const std::string& name = "") const { return (path_ / name).string(); }
  void WriteFile(const std::string& name, const std::string& bytes) const;
  std::string ReadFile(const std::string& name) const;  // a missing file fails the test

 private:
  std::filesystem::path path_;
  TempDir* outer_;
};

using ConfigPtr = std::unique_ptr<Config>;
ConfigPtr Open(const std::string& name, ConfCreateFlag flag = ConfCreateOpen);

// Writes `text` to the file of `name` in the TempDir, or in one of its own, and opens it.
ConfigPtr ParseText(const std::string& name, const std::string& text);

// The tree on one line, children in order: `( head|)a=1 b="x"#( inline) ( above|)c{d=[1,2]} e`,
// where | is a line end. A link shows what it leads to. A null section is "null".
std::string DumpTree(Section* section);

// Saves, and gives what stands in the file, each line end as '\n'. Never the first save of the
// process, whose first comment would have no blank line above it.
std::string Saved(Config* config);

#endif
