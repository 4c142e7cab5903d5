#include "harness.h"

#include <confgrove/save_in_place.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>

namespace {

constexpr std::size_t LongestOwnName = 2;  // of a configuration; too short to lead elsewhere

bool UndefinedLink;  // was reported

// The root directory, to the end of the process.
struct Directory {
  const std::string path = (std::filesystem::temp_directory_path() /
                            ("confgrove_fuzz_" + std::to_string(std::random_device()()) + "/"))
                               .string();
  Directory() {
    std::filesystem::create_directories(path + "folder.cfg");
    ConfSet(path.c_str(), nullptr, 2, ReadMessage);
    WriteFile("base.cfg", "x = 1 y { z = \"text\" #inline\n } l = @y.z\n");
    WriteFile("other.cfg", "#head\n$import \"base\"\nx = [1,2] more = @y\n");
    WriteFile("faulty.cfg", "x = =");
    // The first save of a process draws one blank line less than those that follow.
    const std::unique_ptr<Config> any(ConfCreate("z", ConfCreateNew));
    Require(any->SetInt(1, "x") && any->Save(), "a save");
  }
  ~Directory() { std::filesystem::remove_all(path); }
};

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "doesn't hold: %s\n", what);
  std::abort();
}

void ReadMessage(std::int32_t /*level*/, const char* format, ...) {
  char message[4096];
  va_list arguments;
  va_start(arguments, format);
  Require(std::vsnprintf(message, sizeof message, format, arguments) >= 0, "a message");
  va_end(arguments);
  UndefinedLink = UndefinedLink || std::strstr(message, "link to undefined section") != nullptr;
}

void FreshFiles() {
  static const Directory directory;
  ConfSet(directory.path.c_str(), nullptr, 2, ReadMessage);
  for (const auto& entry : std::filesystem::directory_iterator(directory.path)) {
    if (entry.path().stem().string().size() <= LongestOwnName) std::filesystem::remove(entry);
  }
}

void WriteFile(const std::string& name, const std::string& bytes) {
  std::ofstream(ConfGetRoot() + name, std::ios::binary) << bytes;
}

std::string FileBytes(const std::string& name) { return ReadFile(ConfGetRoot() + name); }

void SaveAndLoad(confgrove::RootSection* root) {
  const std::string name = std::string(root->name()), head = root->comment().str();
  if (name.size() > LongestOwnName) return;
  const std::string path = root->GetFileName();
  if (!root->Save()) return Require(root->read_only || !std::ifstream(path), "a save");
  const std::string bytes = ReadFile(path);
  UndefinedLink = false;
  const std::unique_ptr<Config> loaded(ConfCreate(name.c_str(), ConfCreateOpen));
  // The head comes back with the one import that stands behind it. What Import has attached has
  // more files than its own, and perhaps none on the disk.
  bool fits = FitsAFile(*root) && name.front() != ' ' && name.back() != ' ' &&
              (head.empty() || root->imports.size() == 1) && head.find('\r') == std::string::npos;
  for (const auto& [key, imported] : root->imports) {
    fits = fits && imported != nullptr && imported->files.size() == 1 &&
           (key == "base" || key == "other");
  }
  if (!fits || (loaded == nullptr && UndefinedLink)) return;
  auto* same = dynamic_cast<confgrove::RootSection*>(loaded.get());
  Require(same != nullptr && head == same->comment().view() && Dump(*root) == Dump(*same),
          "a load");
  Require(same->Save() && ReadFile(path) == bytes, "the same bytes at the next save");
  // The canonical layout is that of the first save, which leaves a blank line out.
  const confgrove::SaveResult formatted = confgrove::FormatFile(path);
  Require(formatted && formatted.edits.size() <= 1, "a format that keeps what a save gives");
  for (const confgrove::Edit& edit : formatted.edits) {
    const std::string gone = bytes.substr(edit.offset, edit.length);
    Require(edit.text.empty() && (gone == "\n" || gone == "\r\n"), "but for a blank line");
  }
  Require(confgrove::FormatFile(path).outcome == confgrove::SaveOutcome::Unchanged,
          "nothing to format a second time");
}
