// Io: directories and command-line options.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "support.h"
#include "systems.h"

TEST(Directories, DirEndsInABackslash) {
  for (const std::string text : {"", "a", "a\\", "a/", "\\", "a\\b"}) {
    std::string path = text + '\0' + '~';
    EXPECT_EQ(Io::Dir(path.data()), path.data());
    EXPECT_EQ(path.c_str(), !text.empty() && text.back() == '\\' ? text : text + '\\');
  }
}

TEST(Directories, CreateMakesWhatIsMissing) {
  const TempDir dir;
  dir.WriteFile("file", "");
  std::string deep = "n", backslashed = dir.Path();
  for (int i = 0; i < 6; i++) deep += "\\" + std::string(200, 'n');
  std::replace(backslashed.begin(), backslashed.end(), '/', '\\');
  const std::pair<std::string, int> cases[] = {// 0 is true, without a message
                                               {"one", 0},
                                               {"two\\3\\", 0},
                                               {"two\\4\\5", 0},
                                               {"6\\\\7", 0},
                                               {deep, 0},
                                               {"file", 0},
                                               {"8/9", ENOENT},
                                               {"10\\11/12", ENOENT},
                                               {"file\\x", ThisSystem.errno_below_a_file}};
  TraceLog log(0);
  const std::string message = "1 error during creating directory, errno: ";
  for (const std::string& start : {dir.Path(), backslashed}) {  // the second time much is there
    for (auto [path, error] : cases) {
      SCOPED_TRACE(path);
      EXPECT_EQ(Io::CreateDirectoryRecursive((start + path).c_str()), error == 0);
      EXPECT_EQ(log.Take(), error == 0 ? "" : message + std::to_string(error) + "\n\n");
      std::replace(path.begin(), path.end(), '\\', '/');
      EXPECT_EQ(Exists(dir.Path(path)), error == 0);
    }
  }
  EXPECT_FALSE(Io::CreateDirectoryRecursive(""));
  EXPECT_TRUE(Io::DeleteDirectoryRecursive(dir.Path("10").c_str()));
  EXPECT_TRUE(Io::DeleteDirectoryRecursive(nullptr));
  EXPECT_EQ(log.Text(), message + "2\n\n");
  EXPECT_TRUE(std::filesystem::is_directory(dir.Path("10")));  // made on the way to a failure
}

TEST(Options, FoundAndCopied) {
  const char* const absent = "~~~~";  // what stands in `out`
  const std::pair<const char*, const char*> cases[] = {
      // Not there: the first word, parts of words, other letters, other blanks.
      {"-p 80", absent},
      {"run", absent},
      {"run -port 80", absent},
      {"run --p 80", absent},
      {"run -P 80", absent},
      {"run\t-p 80", absent},
      {"run -p\n80", absent},
      // Words.
      {"run -p 80", "80"},
      {"run  -p   80  90", "80"},
      {"run -p 80 -p 90", "80"},
      {"run -p -q", "-q"},
      {"run -p \r\n\t\f80\f90", "80"},
      {"run -p 8\v0", "8\v0"},
      {"run -p", ""},
      {"run -p   ", "   "},
      // Quotes of either kind, which end each other and begin the value anew.
      {"run -p \"8 0\" 90", "8 0"},
      {"run -p '8 0'90", "8 0"},
      {"run -p '8 0\" 90", "8 0"},
      {"run -p 8'0 9'0", "0 9"},
      {"run -p ''", ""},
      {"run -p '80 ", "80  "},
      {"run -q 'x -p 80' -p 90", " -p 90 "},
  };
  for (const auto& [line, value] : cases) {
    SCOPED_TRACE(line);
    char out[16] = "~~~~";
    EXPECT_EQ(Io::GetCommandLineOption(line, "-p", out, 16), value != absent);
    EXPECT_STREQ(out, value);
    EXPECT_EQ(Io::GetCommandLineOption(line, "-p", nullptr, 16), value != absent);
  }
  for (const std::int32_t size : {6, 5, 4, 1, 0, -1}) {
    char out[16] = "~~~~";
    EXPECT_TRUE(Io::GetCommandLineOption("run -p north", "-p", out, size));
    EXPECT_EQ(out, size < 1 ? absent : std::string("north", static_cast<std::size_t>(size - 1)));
  }
}

TEST(Options, FaultyCalls) {
  for (const auto& [line, option] : {std::pair<const char*, const char*>{nullptr, ""},
                                     {"", nullptr},
                                     {"", "-o"},
                                     {"prog", ""},
                                     {"", ""}}) {
    TraceLog log(0);
    char out[] = "~";
    EXPECT_FALSE(Io::GetCommandLineOption(line, option, out, 2));
    EXPECT_STREQ(out, "~");
    EXPECT_EQ(log.Text(), line && option ? "1 illegal option, strlen <= 0\n" : "");
  }
}
