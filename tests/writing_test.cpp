// Setters: what they make on the way, what they store, what they refuse.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "support.h"

const double Doubles[] = {1.5, -2};
const std::int32_t Ints[] = {2147483647, -2147483647 - 1};
const std::string BadData = "1 bad data during setting array of doubles\n";

TEST(Setters, MakeTheirPath) {
  const ConfigPtr c = ParseText("t", "a=1 b=1{x=1} n=[1,2] to{x=1} link=@to over=@to d=1 e=1 f=1 ");
  TraceLog log(0);
  for (const char* path : {"x.y.z", " b.a ", "b", "n", "A", "\xC0_9", "link.x", "over", "a.1b",
                           "d.", "e..x", "new.end."}) {
    EXPECT_TRUE(c->SetInt(7, path)) << path;
  }
  EXPECT_EQ(log.Take(), "");
  for (const char* path : {"1a", "g.1b", "f.g.1b", ".a", "h.i..x", "  ", "z.\xC9", "z. x"}) {
    EXPECT_FALSE(c->SetInt(7, path)) << path;
  }
  const std::string digit = "1 section cannot begin with number\n";
  const std::string dot = "1 path cannot begin with '.'\n", byte = "1 unknown symbol in the path\n";
  EXPECT_EQ(log.Take(), digit + digit + digit + dot + dot + byte + byte + byte);
  EXPECT_FALSE(c->SetDoubles(nullptr, 1, "1") || c->SetDoubles(Doubles, 0, "z") ||
               c->SetInts(nullptr, 1, "1") || c->SetInts(Ints, -1, "z"));
  EXPECT_EQ(log.Text(), BadData + BadData + BadData + BadData);
  EXPECT_EQ(DumpTree(c.get()),
            "a=1{1b=7} b=7{x=1 a=7} n=7 to{x=1} link{x=7} over=7 d=1{=7} e=1{{x=7}} f=1{g} "
            "x{y{z=7}} A=7 \xC0_9=7 new{end=7} g h{i}");
}

TEST(Setters, StoreValuesAndComments) {
  const ConfigPtr c =
      ParseText("t",
                "text=[1,2] number=[1,2] to=1 link=1 lost=1\n#above\nkept=1 #behind\n{x=1}\n#old\n"
                "lines=1\n#old\nempty=@to\ntwice=1 #old\nfirst=1 #old\nnone=1 #old\n");
  const bool stored[] = {
      c->SetString(" \t\"\xC9 ", "text"),
      c->SetString("x", "number"),
      c->SetDouble(.5, " number "),
      c->SetLink(" to ", " link "),
      c->SetLink("?", "lost"),
      c->SetString("x", "kept"),
      c->SetComment(" 1\n2", " lines "),
      c->SetComment("", "empty"),
      c->SetComment("1\n", "twice"),
      c->SetComment(" 1\n2", "first", true),
      c->SetComment("\n2", "none", true),
      c->SetDoubles(Doubles, 2, " array "),
      c->SetDoubles(Doubles, 1, "one"),
      c->SetInts(Ints, 2, "ints"),
      c->SetBool(true, "yes"),
      c->SetBool(false, "no"),
      c->SetComment("c", "new"),
      c->SetString("me", ""),
      c->SetString(c->GetString("") + 1, ""),
  };
  EXPECT_EQ(std::find(std::begin(stored), std::end(stored), false) - std::begin(stored),
            std::end(stored) - std::begin(stored));
  EXPECT_STREQ(c->GetString(""), "e");
  EXPECT_EQ(DumpTree(c.get()),
            "text=\" \t\"\xC9 \" number=0.5 to=1 link=1 lost (above|)kept=\"x\"{x=1}#(behind) "
            "( 1|2|)lines=1 (|)empty=1 (1||)twice=1#(old) first=1#( 1) none=1 array=[1.5,-2] "
            "one=1.5 ints=[2147483647,-2147483648] yes=1 no=0 (c|)new");
}

// A text that was read is good until another text takes its place.
TEST(Setters, NumbersLeaveATextThatWasRead) {
  const struct {
    const char* note;
    bool (*set)(Section*);
  } cases[] = {
      {"SetDouble", [](Section* a) { return a->SetDouble(1, ""); }},
      {"SetInt", [](Section* a) { return a->SetInt(1, ""); }},
      {"SetBool", [](Section* a) { return a->SetBool(true, ""); }},
      {"SetDoubles", [](Section* a) { return a->SetDoubles(Doubles, 2, ""); }},
      {"SetInts", [](Section* a) { return a->SetInts(Ints, 1, "") && a->SetInts(Ints, 2, ""); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    const ConfigPtr config = ParseText("t", "a=\"1\" b=\"2\" #c\n");
    for (const char* path : {"a", "b"}) {
      Section* const section = config->GetSection(path);
      for (const std::string text : {"short", "a text that takes room of its own"}) {
        EXPECT_TRUE(section->SetString(text.c_str(), ""));
        const char* const read = section->GetString("");
        EXPECT_TRUE(c.set(section) && c.set(section));
        EXPECT_EQ(section->GetString(""), nullptr);
        EXPECT_EQ(read, text);
        EXPECT_TRUE(section->SetString(read, ""));  // copied before it goes
        EXPECT_EQ(section->GetString(""), text);
        EXPECT_TRUE(c.set(section) && section->SetLink("b", ""));
      }
    }
    EXPECT_TRUE(c.set(config->GetSection("a")) && config->RemoveSection("a"));
  }
}

TEST(Setters, RefuseToNestTooDeep) {
  std::string deepest = "a";
  for (int i = 1; i < 1000; i++) deepest += ".a";
  const ConfigPtr c = Open("t", ConfCreateNew);
  EXPECT_TRUE(c->SetInt(1, deepest.c_str()));
  TraceLog log(0);
  EXPECT_FALSE(c->GetSection(deepest.c_str())->SetComment("x", "a"));
  EXPECT_FALSE(c->SetInt(1, ("b." + deepest).c_str()));
  EXPECT_EQ(log.Text(), "1 nesting too deep\n1 nesting too deep\n");
  EXPECT_EQ(c->GetSectionCount(deepest.c_str()), 0);
  EXPECT_EQ(c->GetSectionCount(("b." + deepest.substr(2)).c_str()), 0);  // it stays
}

// Everything that changes a section or saves it.
TEST(ReadOnly, Refuses) {
  TempDir dir;
  dir.WriteFile("t.cfg", "a{b=1}");
  ConfigPtr c = Open("t", ConfCreateOpenReadOnly);
  Section* const a = c->GetSection("a");
  for (const int level : {0, 1}) {
    TraceLog log(level);
    const bool done[] = {
        a->SetInts(nullptr, 1, "b"),
        a->SetInts(Ints, 1, "c"),
        a->SetString("x", " b "),
        a->SetBool(true, ""),
        a->SetLink("b", "1"),
        a->SetDoubles(nullptr, 0, "b"),
        a->SetComment(" x\ny", "b"),
        a->RemoveSection(" b "),
        a->RemoveSection(""),
        c->RemoveSection("a"),
        a->SetName(" x ", "b"),
        a->SetName("", "none", 3),
        c->Save(),
    };
    EXPECT_EQ(std::find(std::begin(done), std::end(done), true) - std::begin(done),
              std::end(done) - std::begin(done));
    const char refusals[] =
        "1 section 'a' is 'read-only', cannot set parameter: c\n"
        "1 section 'a' is 'read-only', cannot set parameter:  b \n"
        "1 section 'a' is 'read-only', cannot set parameter: \n"
        "1 section 'a' is 'read-only', cannot set parameter: 1\n"
        "1 section 'a' is 'read-only', cannot set parameter: b\n"
        "1 section 'a' is 'read-only', cannot set comment ' x\ny'\n"
        "1 section 'a' is 'read-only', cannot remove subsection ' b '\n"
        "1 section 'a' is 'read-only', cannot remove subsection ''\n"
        "1 section 't' is 'read-only', cannot remove subsection 'a'\n"
        "1 section 'a' is 'read-only'. cannot set name ' x '\n"
        "1 section 'a' is 'read-only'. cannot set name ''\n"
        "1 section: 't' is 'read-only'. cannot be saved.\n";
    EXPECT_EQ(log.Text(), BadData + (level == 0 ? "" : refusals));
  }
  EXPECT_EQ(DumpTree(c.get()) + dir.ReadFile("t.cfg"), "a{b=1}a{b=1}");
  const TraceLog log(1);
  EXPECT_TRUE(c.release()->RemoveSection(""));  // the end of a root isn't refused
  EXPECT_EQ(log.Text(), "");
}
