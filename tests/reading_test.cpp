// What a host is told: values, links, paths and comments, through imports too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <vector>

#include "support.h"

namespace {

// All typed reads at `path`: the text, whether there is a number, GetDouble, GetInt, GetBool, the
// length and the type. What isn't written stays 99, 99 and 1.
std::string ReadAll(Section* section, const std::string& path) {
  const char* text = section->GetString(path.c_str());
  double number = 99;
  std::int32_t integer = 99;
  bool truth = true;
  const bool read = section->GetDouble(&number, path.c_str());
  EXPECT_EQ(section->GetInt(&integer, path.c_str()), read);
  EXPECT_EQ(section->GetBool(&truth, path.c_str()), read);
  std::ostringstream all;
  all << (text == nullptr ? "-" : text) << ' ' << read << ' ' << number << ' ' << integer << ' '
      << truth << ' ' << section->GetDoubles(nullptr, 0, path.c_str()) << ' '
      << static_cast<int>(section->GetType(path.c_str()));
  return all.str();
}

const char* const Nothing = "- 0 99 99 1 0 0";

}  // namespace

TEST(Reading, NamesOfAnyLength) {
  for (std::size_t size = 1; size <= 35; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string name(size, 'n');
      name[place] = size % 2 == 0 ? '\xE0' : 'Z';
      const ConfigPtr config = ParseText("t", name + "{b{" + name + "=7}}");
      EXPECT_EQ(DumpTree(config.get()), name + "{b{" + name + "=7}}");
      std::int32_t value = 0;
      EXPECT_TRUE(config->GetInt(&value, (name + ".b." + name).c_str()) && value == 7) << name;
      EXPECT_TRUE(config->GetInt(&value, ("  " + name + ".b." + name + " ").c_str())) << name;
      std::string other = name;
      for (const char c : {'m', '\xFF', '!', '@', '[', '`', '{', '/', ':', '.'}) {
        other[place] = c;
        EXPECT_FALSE(config->GetInt(&value, (other + ".b." + name).c_str())) << other;
        EXPECT_FALSE(config->GetInt(&value, (name + ".b." + other).c_str())) << other;
      }
    }
  }
}

TEST(Reading, ValuesThroughLinks) {
  const ConfigPtr config = ParseText(
      "t",
      "s = \"x\" n = -2.9 # c\n# above\nz = -0.0 h = .5 a = [3 4 5] big = 1e10 inf = -1e999 "
      "max = 2147483647.9 over = 2147483648 min = -2147483648.9 under = -2147483649 "
      "b = \"y\" { c = 2 ls = @s lb = @b } ln = @n # l\nlln = @ln lc = @b.c la = @a me = @me ");
  config->SetDouble(std::nan(""), "nan");
  config->SetLink(" b.c ", "b.blanks");
  config->SetLink("", "top");
  config->SetLink("x", "y");
  config->SetLink("y", "x");
  std::istringstream cases(
      "s x 0 99 99 1 0 1|n - 1 -2.9 -2 1 1 2|z - 1 -0 0 0 1 2|h - 1 0.5 0 1 1 2|a - 1 3 3 1 3 2|"
      "big - 1 1e+10 -2147483648 1 1 2|inf - 1 -inf -2147483648 1 1 2|"
      "nan - 1 nan -2147483648 1 1 2|max - 1 2.14748e+09 2147483647 1 1 2|"
      "over - 1 2.14748e+09 -2147483648 1 1 2|min - 1 -2.14748e+09 -2147483648 1 1 2|"
      "under - 1 -2.14748e+09 -2147483648 1 1 2|b y 0 99 99 1 0 1|b.ls x 0 99 99 1 0 1|"
      "b.lb y 0 99 99 1 0 1|lln - 1 -2.9 -2 1 1 2|lc - 1 2 2 1 1 2|la - 1 3 3 1 3 2|"
      "b.blanks - 1 2 2 1 1 2");
  for (std::string path, answers; cases >> path && std::getline(cases, answers, '|');) {
    EXPECT_EQ(" " + ReadAll(config.get(), path), answers) << path;
  }
  for (const char* path : {"", "no", "top", "me", "x", "y"}) {
    EXPECT_EQ(ReadAll(config.get(), path), Nothing) << path;
  }
  EXPECT_EQ(ReadAll(config->GetSection("b.ls"), ""), "x 0 99 99 1 0 1");
  EXPECT_EQ(config->GetString("b.ls"), config->GetString("s"));  // the very text
  EXPECT_STREQ(config->GetComment("ln", true), " l");            // a link's own
  EXPECT_STREQ(config->GetComment(" z "), " above\n");
  EXPECT_STREQ(config->GetComment("s", true), "");
  EXPECT_EQ(config->GetComment("no"), nullptr);
}

TEST(Reading, ArraysIntoBuffers) {
  const ConfigPtr config = ParseText("t", "a = [1.5 -2.5 3e10] l = @a s = \"x\" ");
  for (const std::int32_t size : {-1, 0, 1, 2, 3, 4}) {
    SCOPED_TRACE(size);
    const std::int32_t copied = std::clamp(size, 0, 3);
    std::vector<double> numbers = {1.5, -2.5, 3e10, 9}, buffer(4, 9);
    std::vector<std::int32_t> ints = {1, -2, -2147483647 - 1, 9}, int_buffer(4, 9);
    std::fill(numbers.begin() + copied, numbers.end(), 9);  // the rest is left as it was
    std::fill(ints.begin() + copied, ints.end(), 9);
    EXPECT_EQ(config->GetDoubles(buffer.data(), size, "l"), size == 0 ? 3 : copied);
    EXPECT_EQ(config->GetInts(int_buffer.data(), size, "l"), copied);
    EXPECT_EQ(buffer, numbers);
    EXPECT_EQ(int_buffer, ints);
    EXPECT_EQ(config->GetDoubles(nullptr, size, "a"), 3);
    EXPECT_EQ(config->GetDoubles(buffer.data(), size, "s"), 0);
  }
}

TEST(Reading, PathsAndTheirMessages) {
  const ConfigPtr config = ParseText("t", "a { b = 1 } _\xC8 = 2 ");
  TraceLog log(0);
  for (const char* path : {"", " a.b  ", "_\xC8"}) EXPECT_NE(config->GetSection(path), nullptr);
  EXPECT_EQ(log.Text(), "");
  for (int times = 0; times < 2; times++) {  // a miss changes no answer
    for (const char* path :
         {"A", "c.b", "a.c", "a.c.d", "a.", "a..b", "a.1b", "   ", "a b", "\ta", ".a", "1a"}) {
      EXPECT_EQ(config->GetSection(path), nullptr) << path;
    }
    std::string expected;
    for (const char* missing : {"A", "c", "c", "c", "", "", "1b"}) {
      expected += "7 section 't': cannot find subsection: " + std::string(missing) + "\n";
    }
    for (int i = 0; i < 3; i++) expected += "1 unknown symbol in the path\n";
    expected += "1 path cannot begin with '.'\n1 section cannot begin with number\n";
    EXPECT_EQ(log.Take(), expected);
  }
  EXPECT_EQ(config->GetSection("a")->GetSection("x.y"), nullptr);
  EXPECT_EQ(log.Text(), "7 section 'a': cannot find subsection: x\n");
  EXPECT_EQ(config->GetSection("a.b")->GetTop(), config->GetTop());
  EXPECT_EQ(DumpTree(config.get()), "a{b=1} _\xC8=2");
}

TEST(Reading, LinksFollowedAreRememberedUntilAValueIsReached) {
  const ConfigPtr config = ParseText("t", "s = \"x\" "), other = ParseText("u", "n = 1");
  config->SetLink("b", "a");
  TraceLog log(0);
  for (int times = 0; times < 2; times++) {
    EXPECT_EQ(config->GetDoubles(nullptr, 0, "a"), 0);
    EXPECT_EQ(log.Take(), "7 section 't': cannot find subsection: b\n");
    EXPECT_EQ(config->GetInts(nullptr, 0, "no"), 0);  // looks nothing up
    EXPECT_NE(config->GetComment("s"), nullptr);
    EXPECT_EQ(config->GetType("a"), SectionType::None);
    EXPECT_EQ(log.Take(), "");  // nor was the target looked up again
    EXPECT_EQ(config->GetDoubles(nullptr, 0, "s"), 0);
  }
  EXPECT_EQ(config->GetDoubles(nullptr, 0, "a"), 0);
  config->SetDouble(1, "b");
  EXPECT_EQ(config->GetDoubles(nullptr, 0, "a"), 0);
  EXPECT_EQ(other->GetDoubles(nullptr, 0, "n"), 1);  // of whatever configuration
  EXPECT_EQ(config->GetDoubles(nullptr, 0, "a"), 1);
}

TEST(Reading, EachRootRefusesAPath) {
  const TempDir dir;
  dir.WriteFile("b.cfg", "");
  const ConfigPtr config = ParseText("t", "$import \"b\"");
  TraceLog log(0);
  EXPECT_EQ(config->GetSection("1"), nullptr);
  EXPECT_EQ(log.Text(), "1 section cannot begin with number\n1 section cannot begin with number\n");
}
