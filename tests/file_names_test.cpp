// Names of files, from the host to the system and back.
#include <gtest/gtest.h>

#include <algorithm>

#include "support.h"
#include "systems.h"

namespace {

std::string Deep() {
  std::string name = "deep";
  for (int i = 0; i < 6; i++) name += "\\" + std::string(100, 'd');
  return name + "\\";
}

const struct {
  const char* note;
  std::string name;
  bool utf8 = true;
} Names[] = {
    {"plain", "a"},
    {"a blank", "two words"},
    {"Cyrillic", "\xD0\xB6\xD1\x83\xD0\xBA"},
    {"Japanese", "\xE8\xA8\xAD\xE5\xAE\x9A"},
    {"beyond 16 bits", "\xF0\x9F\x8C\xB3"},
    {"a code page", "\xE6\xF3\xEA", false},
    {"half of a character", "a\xD0", false},
    {"capitals", "A.CFG.cfg"},
    {"a slash", "sub/a"},
    {"a backslash", "sub\\b"},
    {"a point in front", ".hidden"},
    {"longer than 260", Deep() + "a"},
};

}  // namespace

TEST(FileNames, SavedReadTimedAndImported) {
  const TempDir dir;
  const std::string deep = dir.Path(Deep());
  ASSERT_TRUE(Io::CreateDirectoryRecursive(deep.c_str()));
  std::filesystem::create_directory(dir.Path("sub"));
  std::int32_t written = 0;
  for (const auto& c : Names) {
    SCOPED_TRACE(c.note);
    TraceLog log;
    const ConfigPtr config = Open(c.name, ConfCreateNew);
    EXPECT_TRUE(config->SetInt(++written, "v") && config->Save());
    const bool has_extension = c.name.find(".cfg") != std::string::npos;
    const std::string path = ConfGetRoot() + c.name + (has_extension ? "" : ".cfg");
    EXPECT_EQ(config->GetFileName(), path);
    EXPECT_NE(config->GetFileTime(), nullptr);
    EXPECT_EQ(log.Take(), "");
    std::int32_t number = 0;
    const ConfigPtr read = Open(c.name);
    EXPECT_TRUE(read != nullptr && read->GetInt(&number, "v") && number == written);
    number = 0;
    const ConfigPtr importer = ParseText("importer", "$import \"" + c.name + "\"\n");
    EXPECT_TRUE(importer != nullptr && importer->GetInt(&number, "v") && number == written);
    std::string slashes = path;
    std::replace(slashes.begin(), slashes.end(), '\\', '/');
    EXPECT_TRUE(!c.utf8 || Exists(std::filesystem::u8path(slashes)));
  }
}

TEST(FileNames, RefusedWithTheirBytes) {
  const TempDir dir;
  for (const std::string name : {"none\\\xD0\xB6", "none/\xE6", "\\\\\xD0\xB6\\none\\x"}) {
    SCOPED_TRACE(name);
    TraceLog log;
    EXPECT_EQ(Open(name), nullptr);
    EXPECT_EQ(log.Take(), "2 Translating config file: " + name + "\n1 cannot open import file:" +
                              name + ".cfg\n3 0 error(s), 0 warning(s)\n");
    const ConfigPtr config = Open(name, ConfCreateNew);
    EXPECT_FALSE(config->Save());
    EXPECT_EQ(config->GetFileTime(), nullptr);
    EXPECT_EQ(log.Take(), "1 cannot open file for save:" + name + " \n");
  }
}
