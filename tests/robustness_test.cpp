// Depth, length and a system that refuses: each ends with an answer or one clear message.
#include <confgrove/save_in_place.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "support.h"
#include "systems.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

// The sanitizers take ten times the time and the stack: there the inputs are smaller and the stack
// is larger.
#if defined(__SANITIZE_ADDRESS__)
constexpr int Million = 100000, Long = 6400000, SmallStack = 4 << 20;
#else
constexpr int Million = 1000000, Long = 64000000, SmallStack = 512 << 10;
#endif

void OnSmallStack(std::function<void()> work) {
  const auto run = [](void* function) -> void* {
    (*static_cast<std::function<void()>*>(function))();
    return nullptr;
  };
  pthread_attr_t attributes;
  pthread_t thread;
  pthread_attr_init(&attributes);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, SmallStack), 0);
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
}

std::string Repeat(std::size_t count, const std::string& piece) {
  std::string text;
  for (std::size_t i = 0; i < count; i++) text += piece;
  return text;
}

// A chain of links.
std::string Links(std::size_t count) {
  std::string text = "a0 = 1\n";
  for (std::size_t i = 1; i < count; i++) {
    text += "a" + std::to_string(i) + " = @a" + std::to_string(i - 1) + "\n";
  }
  return text;
}

// Imports of one file under many names, in their order.
std::string Imports(unsigned count) {
  std::string text = "\n";
  for (unsigned i = 0; i < count; i++) {
    text += "$import \"";
    for (unsigned bit = 1 << 14; bit > 0; bit /= 2) text += (i & bit) != 0 ? ".//" : "./";
    text += "./b\"\n";
  }
  return text + "\n";
}

}  // namespace

TEST(Robustness, LongFiles) {
  const struct {
    std::string text, path;   // what holds 1, the text being in canonical form; "" if it is refused
    std::ptrdiff_t messages;  // of a refusal, with the summary
  } cases[] = {
      {std::string(Long, 'n') + " = 1\n", std::string(Long, 'n'), 0},
      {"a = 1\nb = \"" + std::string(Long, 's') + "\"\n", "a", 0},
      {"\n#" + std::string(Long, 'c') + "\na = 1\n", "a", 0},
      {"a = [1" + Repeat(5 * Million, ",-1.23457e-05") + "]\n", "a", 0},
      {Links(Million), "a" + std::to_string(Million - 1), 0},
      {Imports(ThisSystem.many_files) + "a = @x\n", "a", 1},
      {Repeat(Million, "a{"), "", 2},
      {Repeat(Million, "{") + "}", "", 2},
      {Repeat(Million, "a "), "", Million},
      {"$import \"" + std::string(Million, 'b') + "\"", "", 2},
  };
  TempDir dir;
  dir.WriteFile("b.cfg", "x = 1\n");
  for (const auto& c : cases) {
    dir.WriteFile("t.cfg", c.text);
    OnSmallStack([&c] {
      SCOPED_TRACE(c.text.substr(0, 40));
      TraceLog log(0);
      const ConfigPtr config = Open("t");
      EXPECT_EQ(std::count(log.Text().begin(), log.Text().end(), '\n'), c.messages);
      ASSERT_EQ(config == nullptr, c.path.empty());
      std::int32_t number = 0;
      EXPECT_TRUE(c.path.empty() || (config->GetInt(&number, c.path.c_str()) && number == 1));
      EXPECT_TRUE(c.path.empty() || Saved(config.get()) == c.text);
    });
  }
}

TEST(Robustness, LongPaths) {
  const std::string path = "a" + Repeat(Million, ".a");
  OnSmallStack([&path] {
    const ConfigPtr config = Open("t", ConfCreateNew);
    TraceLog log;
    EXPECT_FALSE(config->SetInt(1, path.c_str()));
    EXPECT_EQ(config->GetSection(path.c_str()), nullptr);
    EXPECT_FALSE(config->RemoveSection(path.c_str()));
    EXPECT_EQ(log.Take(),
              "1 nesting too deep\n7 section 't': cannot find subsection: a\n"
              "7 cannot find sub_section:a\n");
  });
}

TEST(Robustness, DeepestTreeInTheLastImport) {
  TempDir dir;
  for (int i = 1; i < 100; i++) {
    dir.WriteFile(std::to_string(i) + ".cfg", "$import \"" + std::to_string(i + 1) + "\"\n");
  }
  dir.WriteFile("100.cfg", Repeat(999, "a{") + "a = 1" + Repeat(999, "}"));
  OnSmallStack([] {
    const ConfigPtr config = Open("1"), last = Open("100");
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->GetType(("a" + Repeat(999, ".a")).c_str()), SectionType::Number);
    const std::string saved = Saved(last.get());
    EXPECT_EQ(Saved(Open("100").get()), saved);
    EXPECT_TRUE(last->RemoveSection("a"));
  });
}

TEST(Robustness, LongChainsOfConfigurations) {
  for (const bool top_down : {true, false}) {
    OnSmallStack([top_down] {
      std::vector<ConfigPtr> owned(10000);
      std::vector<Config*> all;
      for (ConfigPtr& config : owned) {
        config = Open("c" + std::to_string(all.size()), ConfCreateNew);
        all.push_back(config.get());
      }
      TraceLog log;
      for (std::size_t n = 1; n < all.size(); n++) {
        const std::size_t i = top_down ? n : all.size() - n;
        if (all[i - 1]->Import(all[i])) owned[i].release();
      }
      EXPECT_EQ(log.Text(), Repeat(99, "1 imports nested too deep\n"));
    });
  }
}

// Where no file can be made, those that are there stay as they are, and can be saved later.
TEST(System, ForbidsMakingFiles) {
  TempDir dir;
  dir.WriteFile("old.cfg", "a = 1\n");
  std::filesystem::permissions(dir.Path("old.cfg"), std::filesystem::perms::all);
  const ConfigPtr old = Open("old"), made = Open("made", ConfCreateNew);
  TraceLog log(0);
  {
    const ClosedDirectory closed(dir.Path());
    if (!closed.BindsUs()) GTEST_SKIP() << "who runs this may write everywhere";
    for (Config* const config : {old.get(), made.get()}) {
      EXPECT_TRUE(config->SetInt(2, "a"));
      const confgrove::SaveResult result = confgrove::SaveInPlace(config);
      EXPECT_EQ(result.outcome, confgrove::SaveOutcome::Refused);
      EXPECT_EQ(result.reason, "a copy beside it can't be made: Permission denied");
    }
    EXPECT_FALSE(made->Save());
  }
  EXPECT_EQ(log.Text(), "1 cannot open file for save:made \n");
  EXPECT_EQ(dir.ReadFile("old.cfg"), "a = 1\n");
  EXPECT_FALSE(Exists(dir.Path("made.cfg")));
  EXPECT_TRUE(confgrove::SaveInPlace(old.get()) && confgrove::SaveInPlace(made.get()));
  EXPECT_EQ(DumpTree(Open("old").get()) + DumpTree(Open("made").get()), "a=2a=2");
}

#ifndef _WIN32

TEST(System, ForbidsReadingAndWriting) {
  TempDir dir;
  dir.WriteFile("t.cfg", "a = 1\n");
  ASSERT_EQ(chmod(dir.Path("t.cfg").c_str(), 0), 0);
  const auto child = [] {  // what binds nobody binds anybody but root
    bool refused = geteuid() != 0 || setuid(65534) == 0;
    for (const char* name : {"t", "t.cfg/below", "missing/t"}) {
      refused = refused && Open(name) == nullptr && !Open(name, ConfCreateNew)->Save();
    }
    std::exit(refused ? 0 : 1);
  };
  EXPECT_EXIT(child(), testing::ExitedWithCode(0), "");
  ASSERT_EQ(chmod(dir.Path("t.cfg").c_str(), 0600), 0);
  EXPECT_EQ(dir.ReadFile("t.cfg"), "a = 1\n");
}

TEST(System, LimitsASave) {
  TempDir dir;
  const ConfigPtr config = ParseText("t", "a = \"" + std::string(100000, 'x') + "\"\n");
  rlimit before;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small = {4096, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_TRUE(config->Save());
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(std::filesystem::file_size(dir.Path("t.cfg")), 4096u);
  EXPECT_EQ(Saved(config.get()).size(), 100007u);
}

TEST(System, ChangesAFileWhileItIsRead) {
  TempDir dir;
  ASSERT_EQ(mkfifo(dir.Path("t.cfg").c_str(), 0600), 0);
  std::thread writer([&dir] { dir.WriteFile("t.cfg", "a = 1\n" + std::string(300000, '\n')); });
  EXPECT_EQ(DumpTree(Open("t").get()), "a=1");
  writer.join();

  const std::string path = dir.Path("u.cfg");
  dir.WriteFile("u.cfg", "a = 1\n");
  std::atomic<int> rounds = 0;
  std::thread resizer([&] {
    for (; rounds < 300; ++rounds)
      EXPECT_EQ(truncate(path.c_str(), rounds % 2 == 0 ? 1 << 20 : 6), 0);
  });
  while (rounds < 300) EXPECT_EQ(DumpTree(Open("u").get()), "a=1");
  resizer.join();
}

#endif
