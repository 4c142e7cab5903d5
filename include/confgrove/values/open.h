// Open: a configuration that owns itself, or the reasons why there is none.
#ifndef CONFGROVE_VALUES_OPEN_H
#define CONFGROVE_VALUES_OPEN_H

#include <confgrove/config.h>
#include <confgrove/open_file.h>
#include <confgrove/problem.h>
#include <confgrove/values/owner.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace confgrove {
inline namespace values {

// What Open gives. Works like a pointer to the configuration.
class [[nodiscard]] Opened {
 public:
  explicit Opened(Config* config) : config_(config) {}

  explicit operator bool() const { return config_.get() != nullptr; }
  Config& operator*() const { return *config_.get(); }
  Config* operator->() const { return config_.get(); }
  Config* get() const { return config_.get(); }
  Config* release() { return config_.release(); }  // the caller deletes it

  std::vector<Problem> problems{};  // of a file that couldn't be opened

 private:
  detail::Owner<Config> config_;
};

// Opens a file: a path as text, or a std::filesystem::path. Sends no message, and leaves the
// process's settings as they are, with those of the file for its imports: its directory and its
// extension. Save goes by the settings of the process, SaveInPlace by the file.
template <typename Path>
Opened Open(const Path& path, ConfCreateFlag flag = ConfCreateOpen) {
  if constexpr (std::is_convertible_v<const Path&, std::string_view>) {
    const std::string file{std::string_view(path)};
    Opened opened(OpenFile(file, flag));
    if (!opened) opened.problems = Check(file);
    return opened;
  } else {
    const auto text = path.u8string();
    return Open(std::string(text.begin(), text.end()), flag);
  }
}

}  // namespace values
}  // namespace confgrove

#endif
