// The front: settings, names and paths, and what ConfCreate gives.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "support.h"
#include "systems.h"

// In a process of its own, which has set nothing.
TEST(Settings, StartValues) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto use = [] {
    std::string path = "1";
    Symbols::check_path(path);
    Open("no-such-file");  // level 0: silent
    ConfSetTrace(2, nullptr);
    Io::SetTraceHandler(nullptr);
    Open("no-such-file");
    std::exit(*ConfGetRoot());
  };
  EXPECT_EXIT(use(), testing::ExitedWithCode(0),
              testing::Eq("section cannot begin with number\n"
                          "Translating config file: no-such-file\n"
                          "cannot open import file:no-such-file.cfg\n0 error(s), 0 warning(s)\n"));
}

TEST(Settings, TheSameDirectoryStaysWhereItIs) {
  const TempDir dir;
  const char* const root = ConfGetRoot();
  ConfSet(root, ".x", 0, nullptr);
  ConfSet(dir.Path("").substr(0, dir.Path("").size() - 1).c_str(), nullptr, 0, nullptr);
  ConfCreate(dir.Path("a.b").c_str(), ConfCreateOpen, ConfNameFullPath);
  EXPECT_EQ(ConfGetRoot(), root);
  EXPECT_EQ(root, dir.Path(""));
}

namespace {

// Made before the library is first called.
struct SavesAtTheEnd {
  ~SavesAtTheEnd() {
    if (config == nullptr) return;
    std::cerr << config->Save() << config->GetFileName();
    std::filesystem::remove_all(ConfGetRoot());
  }
  Config* config = nullptr;
} AtTheEnd;

}  // namespace

TEST(SettingsDeathTest, StaticObjectsSaveAtTheEnd) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // in a process of its own
  const TempDir dir;
  const auto use = [&dir] {
    AtTheEnd.config = ConfCreate("static", ConfCreateNew);
    AtTheEnd.config->SetInt(1, "a");
    std::string root = dir.Path();
    ConfSet(root.c_str(), ".a_long_extension", 0, nullptr);
    AtTheEnd.config->GetFileName();
    std::exit(0);
  };
  EXPECT_EXIT(use(), testing::ExitedWithCode(0), "^1.+static.a_long_extension$");
}

TEST(Settings, PathsOfRelativeAndFullNames) {
  const struct {
    const char *root, *extension, *name;  // without a root, the name is a full path
    const char *new_root, *file, *next;   // `next`: what the name `n` leads to afterwards
  } cases[] = {
      {"", nullptr, "a", "", "a.cfg", "n.cfg"},
      {"  no such ", "conf", " a ", "no such~", "a.conf", "n.conf"},
      {"   ", "", "a", "", "a.", "n."},
      {"\tno ", " x", "a", "\tno~", "a. x", "n. x"},
      {"no\\", "", "a.b", "no\\", "a.b", "n."},
      {"no/", ".cfg", "A.cfg.bak", "no/^", "A.cfg.bak", "n.cfg"},
      {"no", nullptr, "/a.CFG", "no~", "/a.CFG.cfg", "n.cfg"},
      {"no", nullptr, "  ", "no~", "  .cfg", "n.cfg"},
      {nullptr, nullptr, "no/such/b.conf", "no/such/^", "b.conf", "n.conf"},
      {nullptr, nullptr, "no\\such\\b", "no\\such\\", "b.", "n."},
      {nullptr, nullptr, "b.x.cfg", "", "b.x.cfg", "n.cfg"},
      {nullptr, nullptr, " /no/d.d/b ", "/no/d.d/^", "b.", "n."},
      {nullptr, nullptr, "c:\\no/.cfg", "c:\\no/^", ".cfg", "n.cfg"},
      {nullptr, nullptr, "c:b.cfg", "c:~", "b.cfg", "n.cfg"},
      {nullptr, nullptr, "no/b.cfg.cfg", "no/^", "b.cfg", "n.cfg"},  // b.cfg holds the extension
  };
  const TempDir restores_the_settings;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TraceLog log;
    ConfSet(c.root ? c.root : "x", c.root ? c.extension : ".x", 2, nullptr);
    ConfCreate(c.name, ConfCreateOpen, c.root ? ConfNameRelative : ConfNameFullPath);
    EXPECT_EQ(ConfGetRoot(), ForThisSystem(c.new_root));
    Open("n");
    const std::string from = "2 Translating config file: ", to = "\n1 cannot open import file:";
    const std::string counts = "\n3 0 error(s), 0 warning(s)\n";
    EXPECT_EQ(log.Text(), from + c.name + to + c.file + counts + from + "n" + to + c.next + counts);
  }
  ConfCreate("sub/x.y", static_cast<ConfCreateFlag>(5), ConfNameFullPath);
  EXPECT_EQ(ConfGetRoot(), ForThisSystem("sub/^"));  // whatever becomes of the load
}

TEST(ConfCreate, NamesTheRootAndLabelsItsMessages) {
  const TempDir dir;
  std::filesystem::create_directory(dir.Path("sub"));
  dir.WriteFile("a.cfg", "a 1");
  dir.WriteFile("sub/a.conf", "\nb 1");
  TraceLog log(0);
  EXPECT_STREQ(Open(" a ", ConfCreateOpenAlways)->GetName(""), "a");
  EXPECT_STREQ(Open("a.cfg", ConfCreateOpenAlways)->GetName(""), "a.cfg");
  const ConfigPtr config(
      ConfCreate(dir.Path("sub/a.conf").c_str(), ConfCreateOpenAlways, ConfNameFullPath));
  EXPECT_STREQ(config->GetName(""), "a");
  const std::string error = ", error: syntax error\n3 1 error(s), 0 warning(s)\n";
  EXPECT_EQ(log.Take(), "1 a.cfg(1)" + error + "1 a.cfg.cfg(1)" + error + "1 " +
                            ForThisSystem("sub/^a.conf(2)") + error);
  for (int i = 0; i <= 5; i++) EXPECT_EQ(Open("", static_cast<ConfCreateFlag>(i)), nullptr);
  EXPECT_STREQ(Open("  ", ConfCreateNew)->GetName(""), "  ");
  EXPECT_EQ(log.Text(), "");
}

// Every flag on a missing, a faulty and a sound file, at each trace level.
TEST(ConfCreate, OutcomesAndMessages) {
  const TempDir dir;
  dir.WriteFile("faulty.cfg", "x { }\na = 1 2");
  dir.WriteFile("sound.cfg", "x { }\na = 1");
  std::filesystem::create_directory(dir.Path("directory.cfg"));
  const struct {
    const char *file, *outcomes;  // of flag 0 to 5: no root, an empty or a loaded one
    std::string from_2, from_1, always, counts;
  } files[] = {
      {"missing", "E--EE-", "1 cannot open import file:missing.cfg\n", "", "", "0 error(s), 0"},
      {"directory", "E--EE-", "1 cannot open import file:directory.cfg\n", "", "", "0 error(s), 0"},
      {"faulty", "E---E-", "", "2 faulty.cfg(1), warning: blank section\n",
       "1 faulty.cfg(2), error: syntax error\n", "1 error(s), 1"},
      {"sound", "ELLLL-", "", "2 sound.cfg(1), warning: blank section\n", "", "0 error(s), 1"},
  };
  for (const auto& file : files) {
    for (int i = 0; i < 6 * 4; i++) {
      const int flag = i / 4, level = i % 4 - 1;  // -1 is as 0
      const std::string name = file.file;
      SCOPED_TRACE(name + " " + std::to_string(i));
      TraceLog log(level);
      const ConfigPtr config = Open(name, static_cast<ConfCreateFlag>(flag));
      const std::string counts = "3 " + file.counts + " warning(s)\n";
      const std::string messages = level > 0 ? "2 Translating config file: " + name + "\n" +
                                                   (level > 1 ? file.from_2 : "") + file.from_1 +
                                                   file.always + counts
                                             : file.always + (file.always.empty() ? "" : counts);
      EXPECT_EQ(log.Text(), flag == 0 || flag == 5 ? "" : messages);
      const char outcome = file.outcomes[flag];
      EXPECT_EQ(DumpTree(config.get()), outcome == '-' ? "null" : outcome == 'E' ? "" : "x a=1");
      if (config == nullptr) continue;
      EXPECT_EQ(config->SetInt(1, "n"), flag != ConfCreateOpenReadOnly);
    }
  }
}
