// What is so on Windows alone: devices, forms of paths, files that others have open.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "platform/windows_api.h"
#include "support.h"
#include "systems.h"
#include "text/replace_file.h"

namespace {

// Saves, reads and times; what has worked, as letters.
std::string Outcome(const std::string& full_path) {
  const ConfigPtr made(ConfCreate(full_path.c_str(), ConfCreateNew, ConfNameFullPath));
  std::string outcome = made->SetInt(1, "a") && made->Save() ? "s" : "";
  outcome += made->GetFileTime() != nullptr ? "t" : "";
  const ConfigPtr read(ConfCreate(full_path.c_str(), ConfCreateOpen, ConfNameFullPath));
  return outcome + (DumpTree(read.get()) == "a=1" ? "r" : "");
}

std::string Replace(const std::string& path, const std::string& bytes) {
  confgrove::FileReplacement file(path);
  std::string before;
  confgrove::Platform::FileStamp stamp;
  const std::string problem = file.Read(&before, &stamp);
  return problem.empty() ? file.Put(bytes) : problem;
}

std::size_t FilesIn(const TempDir& dir) {
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
    files += entry.is_regular_file() ? 1 : 0;
  }
  return files;
}

}  // namespace

TEST(Windows, FormsOfPaths) {
  const TempDir dir;
  const std::string path = dir.Path("a.cfg");
  std::string slashes = path;
  std::replace(slashes.begin(), slashes.end(), '\\', '/');
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(dir.Path());
  for (const std::string& form : {path, slashes, "\\\\?\\" + path, path.substr(2), dir.Path("b."),
                                  std::string("c.cfg"), "\\\\?\\" + dir.Path("d.cfg")}) {
    EXPECT_EQ(Outcome(form), "str") << form;
  }
  // Relative to the directory of its drive.
  ConfSet("", nullptr, 0, nullptr);
  const ConfigPtr config = Open(path.substr(0, 2) + "e", ConfCreateNew);
  EXPECT_TRUE(config->SetInt(1, "a") && config->Save());
  EXPECT_EQ(dir.ReadFile("e.cfg"), "a = 1\r\n");
  std::filesystem::current_path(before);
  EXPECT_EQ(FilesIn(dir), 5u);
}

// The code page of a Russian system.
TEST(Windows, NamesInTheCodePage) {
  if (::GetACP() != 1251) GTEST_SKIP() << "this system has another code page";
  const TempDir dir;
  EXPECT_EQ(Outcome(dir.Path() + "\xE6\xF3\xEA.cfg"), "str");
  EXPECT_TRUE(Exists(std::filesystem::path(dir.Path()) / L"\x436\x443\x43A.cfg"));
  // UTF-8 in part, so all of it is of the page.
  EXPECT_EQ(Outcome(dir.Path() + "\xE6\xF3\xEA\xD0\xB6.cfg"), "str");
  EXPECT_TRUE(Exists(std::filesystem::path(dir.Path()) / L"\x436\x443\x43A\x420\xB6.cfg"));
  EXPECT_EQ(FilesIn(dir), 2u);
}

TEST(Windows, DevicesAreNoFiles) {
  const TempDir dir;
  for (const std::string path : {"nul", "\\\\.\\nul", "con", "\\\\server\\share\\x.cfg",
                                 "\\\\?\\UNC\\server\\share\\x.cfg"}) {
    EXPECT_EQ(Outcome(path), "") << path;
  }
}

TEST(Windows, ReplacementTellsWhoIsInTheWay) {
  using confgrove::Platform::WideName;
  const TempDir dir;
  const std::string path = dir.Path("f.cfg");
  constexpr DWORD Nobody = 1 << 30;
  const struct {
    const char* note;
    DWORD share, attributes;  // `share`: what somebody who has it open allows to others
    bool replaced;
  } cases[] = {
      {"nobody", Nobody, FILE_ATTRIBUTE_NORMAL, true},
      {"hidden", Nobody, FILE_ATTRIBUTE_HIDDEN, true},
      {"a reader", FILE_SHARE_READ | FILE_SHARE_WRITE, FILE_ATTRIBUTE_NORMAL, false},
      {"one who forbids all", 0, FILE_ATTRIBUTE_NORMAL, false},
      {"read-only", Nobody, FILE_ATTRIBUTE_READONLY, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    dir.WriteFile("f.cfg", "a = 1\n");
    ::SetFileAttributesW(WideName(path).c_str(), c.attributes);
    std::optional<confgrove::Platform::Handle> other;
    if (c.share != Nobody) {
      other.emplace(path, GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, c.share);
      ASSERT_TRUE(other->is_open());
    }
    EXPECT_EQ(Replace(path, "a = 2\n").empty(), c.replaced);
    other.reset();
    EXPECT_EQ(dir.ReadFile("f.cfg"), c.replaced ? "a = 2\n" : "a = 1\n");
    EXPECT_EQ(FilesIn(dir), 1u);
    constexpr DWORD Told = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(::GetFileAttributesW(WideName(path).c_str()) & Told, c.attributes & Told);
    ::SetFileAttributesW(WideName(path).c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  EXPECT_EQ(Replace(dir.Path("new.cfg."), "a = 2\n"), "");
  EXPECT_EQ(Replace(dir.Path("new.cfg."), "a = 3\n"), "");  // the point goes
  EXPECT_EQ(dir.ReadFile("new.cfg"), "a = 3\n");
  EXPECT_NE(Replace(dir.Path("none\\new.cfg"), ""), "");
}
