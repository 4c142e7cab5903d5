// Saving: the written form byte for byte, its columns and blank lines, refusals.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iostream>
#include <random>
#include <vector>

#include "support.h"
#include "systems.h"

TEST(Save, WholeFile) {
  TempDir dir;
  for (const char* name : {"tides.cfg", "buoys.cfg", "Wind.cfg"}) dir.WriteFile(name, "");
  const ConfigPtr c =
      ParseText("t",
                "$import \"tides\" pump{on=1 # since May\n# metres\n# above the floor\nlevels=[-.5 "
                "4,6.250]#\n"
                "deep{#!\nx=\"\"}}#out\n$import \"Wind\"$import \"buoys\"\n/* gone */flow=36.5 #a\n"
                "rate=0.00001234567 #bb\n#c\nto=@pump.on #d\n");
  EXPECT_TRUE(c->SetComment(" The pump house.\n", "") && c->SetString("unsaved", "") &&
              c->SetComment("unsaved", "", true));
  EXPECT_EQ(
      Saved(c.get()),
      "# The pump house.\n#\n\n$import \"Wind\"\n$import \"buoys\"\n$import \"tides\"\n\n"
      "pump            #out\n{\n\ton = 1                 # since May\n\n\t# metres\n"
      "\t# above the floor\n\tlevels = [-0.5,4,6.25]\n\tdeep\n\t{\n\t\t#!\n\t\tx = \"\"\n\t}\n}\n"
      "flow = 36.5     #a\nrate = 1.23457e-05 #bb\n\n#c\nto = @pump.on   #d\n");
}

TEST(Save, BlankLinesAndColumns) {
  TempDir dir;
  const ConfigPtr c = ParseText(
      "t",
      "#a\na{\n#b\nb #1\n{\n#c\nc=1}\n#d\n#\nd=1e22 #2\ne=1e-7 #3\n}f=1 #4\ng=\"123\" #5\n#h\nh=0\n"
      "i=@a.b #6\nlongest_of_all{}\n");
  EXPECT_TRUE(c->SetString("\"\n", "f") && c->SetDouble(-10, "g") && c->SetLink(" 1 x", "h"));
  EXPECT_EQ(Saved(c.get()),
            "\n#a\na\n{\n\t#b\n\tb                           #1\n\t{\n\t\t#c\n\t\tc = "
            "1\n\t}\n\n\t#d\n\t#\n"
            "\td = 1e+22 #2\n\te = 1e-07                       #3\n}\nf = \"\"\n\"       #4\n"
            "g = -10        #5\n\n#h\nh = @ 1 x\ni = @a.b       #6\n");
}

// A blank section is skipped; the name of what isn't there makes a block.
TEST(Save, SectionsWithoutContent) {
  TempDir dir;
  const ConfigPtr c =
      ParseText("t", "#a\na{} b{c{}\n#d\nd=1} e{f{}} g=1 h=1 i=1\n#j\nj{k=1} l{m=1} n=1");
  EXPECT_FALSE(c->GetSection("g.x") || c->GetName("h.") || c->RemoveSection("i.x.y") ||
               c->SetInt(1, "o.1") || c->GetSection("n.m"));
  EXPECT_TRUE(c->RemoveSection("j.k") && c->SetName("x.1", "l.m") && c->SetInt(1, "n.m") &&
              c->SetComment("p", "p"));
  TraceLog log(0);
  EXPECT_EQ(
      Saved(c.get()),
      "b\n{\n\t#d\n\td = 1\n}\ne\n{\n}\ng = 1\n{\n}\nh = 1\n{\n}\ni = 1\n{\n}\n\n#j\nj\n{\n}\n"
      "l\n{\n\tx.1 = 1\n}\nn = 1\n{\n\tm = 1\n}\n");
  std::string messages;
  for (const std::string name : {"a", "c", "f", "o", "p"}) {
    messages += "2 [" + name + "] - trying to save blank section without property. skipped\n\n";
  }
  EXPECT_EQ(log.Text(), messages);
}

// The first comment of a file gets its blank line once the process has saved a section.
TEST(SaveDeathTest, FirstOfAProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");  // in a process of its own
  const auto save = [] {
    {
      TraceLog log;
      TempDir dir;
      const ConfigPtr blank = ParseText("blank", "a{}"), c = ParseText("t", "#c\na=1");
      std::cerr << blank->Save() << c->Save() << WithoutLineEnds(dir.ReadFile("t.cfg"));
      std::cerr << c->Save() << WithoutLineEnds(dir.ReadFile("t.cfg"));
    }
    std::exit(0);
  };
  EXPECT_EXIT(save(), testing::ExitedWithCode(0), testing::Eq("11#c\na = 1\n1\n#c\na = 1\n"));
}

// Any double is written as by %g, and measured as by %f without the zeros at its end.
TEST(Save, NumbersAsPrintfGivesThem) {
  TempDir dir;
  std::mt19937_64 random(1);
  std::vector<double> numbers = {0.,   -0.,  1234.5678, 999999,    999999.5, 1e6,      123456.5,
                                 1e-4, 1e-5, 1234565,   9.9999999, -1.7e308, INFINITY, NAN};
  for (int i = 0; i < 3000; i++) {
    const std::uint64_t bits = random();
    std::memcpy(&numbers.emplace_back(), &bits, sizeof bits);
    numbers.push_back(static_cast<double>(random() % 10000000) / std::pow(10, random() % 12));
    numbers.push_back(static_cast<double>(random()) / std::pow(2, random() % 80));
  }
  std::string written, measured;
  for (const double number : numbers) {
    char text[400];
    std::snprintf(text, sizeof text, "%g,", number);
    written += text;
    std::snprintf(text, sizeof text, "%f", number);
    measured += text;
    if (std::isfinite(number)) measured.erase(measured.find_last_not_of('0') + 1);
    measured.back() == '.' ? void(measured.back() = ',') : measured.push_back(',');
  }
  const ConfigPtr c = ParseText("t", "b=1 #x\n");
  EXPECT_TRUE(c->SetDoubles(numbers.data(), static_cast<std::int32_t>(numbers.size()), "a"));
  written.back() = ']';
  EXPECT_TRUE(Saved(c.get()) ==
              "b = 1" + std::string(measured.size() + 1, ' ') + "#x\na = [" + written + "\n");
}

TEST(Save, GoesByTheNameOfNow) {
  TempDir dir;
  std::filesystem::create_directory(dir.Path("b.cfg"));
  const ConfigPtr c = ParseText("t", "a=1");
  TraceLog log(0);
  for (const char* name : {"none/t", "b"}) EXPECT_FALSE(!c->SetName(name, "") || c->Save());
  EXPECT_EQ(log.Text(), "1 cannot open file for save:none/t \n1 cannot open file for save:b \n");
  EXPECT_TRUE(c->SetName("u", ""));
  EXPECT_EQ(Saved(c.get()) + dir.ReadFile("t.cfg"), "a = 1\na=1");
  if (ThisSystem.full_device == nullptr) GTEST_SKIP() << "the rest needs a device that is full";
  std::filesystem::create_symlink(ThisSystem.full_device, dir.Path("full.cfg"));
  EXPECT_TRUE(c->SetString(std::string(1 << 20, 'x').c_str(), "a") && c->SetName("full", ""));
  EXPECT_TRUE(c->Save());  // what the device refuses is not seen
}
