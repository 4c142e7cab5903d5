// Removing, renaming and listing.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "support.h"

TEST(RemoveSection, TakesAllBelowAndJudgesNoPath) {
  const ConfigPtr c = ParseText("t", "a{b{c=1} d=2} b=3 e{x=1 y=2 z{v=3}}");
  TraceLog log;
  EXPECT_FALSE(c->RemoveSection("a.x.c") || c->RemoveSection("b.") || c->RemoveSection("  ") ||
               c->GetSection("a")->RemoveSection("1 ?"));
  EXPECT_EQ(log.Take(),
            "7 cannot find sub_section:x\n7 cannot find sub_section:\n"
            "7 cannot find sub_section:  \n7 cannot find sub_section:1 ?\n");
  EXPECT_TRUE(c->RemoveSection(" a.b ") && c->GetSection("e")->RemoveSection("y") &&
              c->GetSection("e.x")->RemoveSection("") && c->SetInt(4, "a.b"));
  EXPECT_EQ(DumpTree(c.get()), "a{d=2 b=4} b=3 e{z{v=3}}");
  EXPECT_EQ(log.Text(), "");
}

TEST(SetName, KeepsAllButTheName) {
  const ConfigPtr c = ParseText("t", "a=1\n#c\nb=2 #i\n{c=3 d=4 e=5} f=6");
  TraceLog log;
  EXPECT_FALSE(c->SetName("a", "b") || c->SetName(" c ", "b", 1) || c->SetName("", "none") ||
               c->SetName("x", "b", 3) || c->SetName("x", "a", 0));
  EXPECT_TRUE(c->SetName(" y ", " b ") && c->SetName("b", "y", 1) && c->SetName("y", "y") &&
              c->SetName("b", "y", 1) && c->SetName("a", "y.c", -7) && c->SetName(" ", "a") &&
              c->SetName("x.1\xC9", "", 2) && c->SetInt(7, "b"));
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(DumpTree(c.get()), " =1 (c|)y=2{a=3 b=4 e=5}#(i) x.1\xC9=6 b=7");
  EXPECT_FALSE(c->SetName("x", "y.c", 0));
  EXPECT_EQ(log.Text(), "7 section 't': cannot find subsection: c\n");
}

// Names that differ in a byte in which blocks don't look first.
TEST(Editing, NamesThatLookAlike) {
  for (const int others : {0, 40}) {
    const ConfigPtr c = ParseText("t", "abcd=1 abxd=2 aaaa=3");
    for (int i = 0; i < others; i++) EXPECT_TRUE(c->SetInt(i, ("n" + std::to_string(i)).c_str()));
    const std::pair<std::string, int> values[] = {
        {"abcd", 1}, {"abxd", 2}, {"abyd", 0}, {std::string(4 + 256, 'a'), 0}};
    for (const auto& [name, value] : values) {
      std::int32_t found = 0;
      EXPECT_EQ(c->GetInt(&found, name.c_str()), value != 0) << name;
      EXPECT_EQ(found, value) << name;
    }
    EXPECT_FALSE(c->SetName("abxd", "abcd") || c->RemoveSection("abyd"));
    EXPECT_TRUE(c->SetName("abyd", "abxd") && c->GetSection("abcd") && !c->GetSection("abxd"));
    EXPECT_TRUE(c->RemoveSection("abcd") && c->GetSection("abyd") && !c->GetSection("abcd"));
    EXPECT_EQ(c->GetSectionCount(""), 2 + others);
  }
}

TEST(Listing, ByPathAndIndex) {
  const ConfigPtr c = ParseText("t", "b=1{x=1 y=2} a=1");
  TraceLog log;
  EXPECT_EQ(std::string(c->GetName("")) + c->GetName(" b.y ") + c->GetName("", 1), "tya");
  EXPECT_EQ(c->GetSection(" b ", 1), c->GetSection("b")->GetSection("y", -9));
  EXPECT_TRUE(c->GetSection("") == c->GetTop() && c->GetSectionCount("a") == 0);
  EXPECT_FALSE(c->GetName("b", 2) || c->GetSection("a", 0));
  EXPECT_EQ(log.Take(), "");
  EXPECT_TRUE(c->GetSectionCount("b.z") == -1 && c->GetName("1", 0) == nullptr);
  EXPECT_EQ(log.Text(),
            "7 section 't': cannot find subsection: z\n1 section cannot begin with number\n");
}

// Random steps on one block, against a plain list of the names and texts that it holds.
TEST(Editing, IndexesStayDense) {
  std::mt19937 random(1);
  const ConfigPtr config = ParseText("t", "block{}");
  Section* const block = config->GetSection("block");
  std::vector<std::pair<std::string, std::string>> model;
  for (int step = 0; step < 4000; step++) {
    const std::string name = "n" + std::to_string(random() % 50);
    const std::string other = "n" + std::to_string(random() % 50);
    const auto find = [&](const std::string& wanted) {
      return std::find_if(model.begin(), model.end(), [&](auto& m) { return m.first == wanted; });
    };
    const auto at = find(name);
    const bool exists = at != model.end();
    const int kind = static_cast<int>(random() % 5);
    if (kind < 2) {
      const std::string text(random() % (kind == 0 ? 40 : 700), "abcde"[step % 5]);
      EXPECT_TRUE(block->SetString(text.c_str(), name.c_str()));
      (exists ? *at : model.emplace_back(name, "")).second = text;
    } else if (kind == 2) {
      EXPECT_EQ(block->RemoveSection(name.c_str()), exists);
      if (exists) model.erase(at);
    } else {
      const bool done = exists && (other == name || find(other) == model.end());
      const int index = kind == 3 ? -1 : static_cast<int>(at - model.begin());
      EXPECT_EQ(block->SetName(other.c_str(), kind == 3 ? name.c_str() : "", index), done);
      if (done) at->first = other;
    }
    std::string tree;
    for (const auto& [key, text] : model) {
      EXPECT_EQ(block->GetName(key.c_str()), key);
      tree += (tree.empty() ? "" : " ") + key + "=\"" + text + '"';
    }
    ASSERT_EQ(DumpTree(block), tree) << step;  // walks by index
    ASSERT_EQ(block->GetSectionCount(""), static_cast<int>(model.size()));
  }
}

// Short names stand beside their section, in what room there is, and others elsewhere.
TEST(Editing, NamesOfAnyLength) {
  for (const int siblings : {0, 20}) {
    const ConfigPtr c = Open("t", ConfCreateNew);
    for (int i = 0; i < siblings; ++i) c->SetInt(i, ("n" + std::to_string(i)).c_str());
    std::string name(70000, 'x');
    EXPECT_TRUE(c->SetInt(7, name.c_str()));
    for (const int length : {1, 7, 8, 65535, 65536, 3}) {
      const auto size = static_cast<std::size_t>(length);
      const std::string made(size, 'y'), renamed(size, 'x');
      EXPECT_TRUE(c->SetInt(length, made.c_str()) && c->SetName(renamed.c_str(), name.c_str()));
      EXPECT_EQ(c->GetSection(name.c_str()), nullptr);
      EXPECT_EQ(c->GetName("", siblings), renamed);
      std::int32_t values[] = {0, 0};
      EXPECT_TRUE(c->GetInt(&values[0], made.c_str()) && c->GetInt(&values[1], renamed.c_str()));
      EXPECT_TRUE(values[0] == length && values[1] == 7);
      EXPECT_TRUE(c->SetName(name.c_str(), made.c_str()) && c->RemoveSection(name.c_str()));
      name = renamed;
    }
  }
}
