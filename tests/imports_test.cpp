// Configurations that stand on others: attaching, looking through, ownership, file names and times.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <iterator>
#include <random>
#include <utility>

#include "support.h"
#include "systems.h"

namespace {

ConfigPtr New(const std::string& name) { return Open(name, ConfCreateNew); }

// Hands `config` over to `root`, as an import.
Config* Attach(Config* root, ConfigPtr config) {
  EXPECT_TRUE(root->Import(config.get())) << config->GetName("");
  return config.release();
}

// Makes `length` roots, each the import of the one before; gives the last.
Config* Extend(Config* last, int length) {
  for (int i = 0; i < length; i++) last = Attach(last, New(last->GetName("") + std::string("x")));
  return last;
}

}  // namespace

TEST(Import, RefusalsInTheirOrder) {
  TempDir dir;
  for (const char* name : {"a.cfg", "c.cfg"}) dir.WriteFile(name, "$import \"b\"");
  dir.WriteFile("b.cfg", "x=1");
  const ConfigPtr a = Open("a"), b = Open("b"), c = Open("c"), same = New("d"), e = New("e");
  const ConfigPtr locked = Open("b", ConfCreateOpenReadOnly);
  Config *const d = Attach(a.get(), New("d")), *const f = Attach(e.get(), New("f"));
  for (const int level : {0, 1}) {
    TraceLog log(level);
    const bool done[] = {
        locked->Import(nullptr),
        locked->Import(locked.get()),
        a->Import(a.get()),
        a->Import(b.get()),
        a->Import(same.get()),
        d->Import(a.get()),
        a->Import(c.get()),
        d->Import(c.get()),
        a->Import(d),
        d->Import(d),
        a->Import(f),
    };
    EXPECT_EQ(std::find(std::begin(done), std::end(done), true) - std::begin(done),
              std::end(done) - std::begin(done));
    const char refusals[] =
        "1 config 'b' is 'read-only'. cannot import file 'b'\n"
        "1 section 'a' has been already declared in file: 'a', skipped\n"
        "1 section 'a' has been already declared in file: 'b', skipped\n"
        "1 section 'a' has been already declared in file: 'd', skipped\n"
        "1 section 'd' has been already declared in file: 'a', skipped\n"
        "1 [a] import: recursive import, skipped\n1 [d] import: recursive import, skipped\n"
        "1 [a] import: recursive import, skipped\n1 [d] import: recursive import, skipped\n"
        "1 [a] import: recursive import, skipped\n";
    EXPECT_EQ(log.Text(), level == 0 ? "" : refusals);
  }
  EXPECT_EQ(Saved(d), "");  // nothing has changed
  // Only the outermost is asked, and for the name as it is written.
  Attach(d, New("d"));
  for (const char* name : {"\xC0", "b.cfg"}) Attach(a.get(), New(name));
  EXPECT_EQ(Saved(a.get()),
            "\n$import \"b\"\n$import \"b.cfg\"\n$import \"d\"\n$import \"\xC0\"\n\n");
}

TEST(Import, ChainsHaveALimit) {
  ConfigPtr top = New("u"), tall = New("v"), fits = New("w");
  Config *const bottom = Extend(top.get(), 59), *const end = Extend(fits.get(), 39);
  Extend(tall.get(), 40);
  TraceLog log;
  EXPECT_FALSE(bottom->Import(tall.get()));
  Attach(bottom, std::move(fits));  // makes 100 of them
  EXPECT_FALSE(end->Import(New("z").get()));
  EXPECT_EQ(log.Text(), "1 imports nested too deep\n1 imports nested too deep\n");
  Attach(top.get(), std::move(tall));  // a branch of its own
}

TEST(Imports, LookupsFallThrough) {
  TempDir dir;
  dir.WriteFile("zz.cfg", "q=1");
  dir.WriteFile("b.cfg", "$import \"zz\" x=1 y{z=1} v=1 l=@v\n");
  dir.WriteFile("c.cfg", "x=2 y{w=2} q=2");
  const ConfigPtr root = ParseText("t", "$import \"c\" $import \"b\" v=2 y{u=3}");
  std::string values;
  for (const char* path : {"x", "q", "y.z", "y.w", "y.u", "v", "l"}) {
    std::int32_t value = 0;
    EXPECT_TRUE(root->GetInt(&value, path));
    values += std::to_string(value);
  }
  EXPECT_EQ(values, "1112322");
  EXPECT_EQ(DumpTree(root->GetSection("l")->GetTop()), "x=1 y{z=1} v=1 l=1");  // its own view
  EXPECT_EQ(root->GetSection("y")->GetSection("z"), nullptr);
  EXPECT_EQ(root->GetSectionCount(""), 2);
  TraceLog log(0);
  EXPECT_STREQ(root->GetName("y.w"), "w");
  EXPECT_EQ(log.Text(),
            "7 section 't': cannot find subsection: w\n"
            "7 section 'b': cannot find subsection: w\n"
            "7 section 'zz': cannot find subsection: y\n");
}

TEST(Imports, WritesStayInTheirOwnFile) {
  TempDir dir;
  dir.WriteFile("b.cfg", "x=1 y{z=1}");
  const ConfigPtr root = ParseText("t", "$import \"b\"");
  Section* const x = root->GetSection("x");
  EXPECT_FALSE(x->SetInt(3, "") || x->SetName("v", "") || root->RemoveSection("x"));
  EXPECT_TRUE(root->SetInt(2, "x") && root->SetName("w", "y", 0));  // a rename reaches the import
  EXPECT_EQ(DumpTree(root.get()) + "; " + DumpTree(x->GetTop()), "x=2; x=1 y{w=1}");
  EXPECT_TRUE(root->RemoveSection("x"));
  EXPECT_EQ(root->GetSection("x"), x);
  Config* const c = Attach(root.get(), New("c"));
  EXPECT_TRUE(c->SetInt(4, "v") && root->GetSection("v")->SetInt(5, ""));
  EXPECT_TRUE(x->GetTop()->RemoveSection("") && !root->GetSection("x"));
  EXPECT_EQ(Saved(root.get()) + Saved(c), "\n$import \"b\"\n$import \"c\"\n\nv = 5\n");
}

TEST(Imports, EveryOrderOfDestruction) {
  TempDir dir;
  ConfigPtr a = New("a");
  Config* const b = Attach(a.get(), New("b"));
  EXPECT_TRUE(Attach(b, New("c"))->RemoveSection(""));  // the innermost
  EXPECT_EQ(Saved(b), "\n$import \"c\"\n\n");           // its key stays
  EXPECT_TRUE(Attach(b, New("c"))->SetInt(1, "v") && a->GetSection("v"));
  delete b;  // the one between
  EXPECT_EQ(a->GetSection("v"), nullptr);
  EXPECT_EQ(Saved(a.get()), "\n$import \"b\"\n\n");
  Attach(Attach(a.get(), New("b")), New("c"));
  EXPECT_TRUE(a.release()->RemoveSection(""));  // all
}

TEST(Imports, RenamedRootMovesItsKey) {
  TempDir dir;
  const ConfigPtr root = New("a");
  Config *const b = Attach(root.get(), New("b")), *const c = Attach(root.get(), New("c"));
  EXPECT_TRUE(b->SetInt(1, "v") && c->SetInt(2, "v"));
  EXPECT_FALSE(b->SetName("c", ""));
  EXPECT_TRUE(b->SetName("b", "") && b->SetName(" d ", ""));
  EXPECT_EQ(root->GetSection("v"), c->GetSection("v"));  // now the first of them
  EXPECT_EQ(Saved(root.get()), "\n$import \"c\"\n$import \"d\"\n\n");
  delete c;
  EXPECT_TRUE(b->SetName("c", ""));  // free again
  EXPECT_EQ(root->GetSection("v"), b->GetSection("v"));
  delete b;
  EXPECT_EQ(root->GetSection("v"), nullptr);
  EXPECT_EQ(Saved(root.get()), "\n$import \"c\"\n\n");
}

TEST(Files, NameAndTimeAreOfThisMoment) {
  const ConfigPtr a = New("x");
  EXPECT_STREQ(a->GetFileName(), "x.cfg");
  const TempDir dir;
  const std::string root = ThisSystem.any_time != nullptr ? ThisSystem.any_time : dir.Path();
  ConfSet(root.c_str(), "test", 0, nullptr);
  const std::string name = "confgrove_" + std::to_string(std::random_device()());
  EXPECT_TRUE(a->SetName(name.c_str(), ""));
  const std::string path = a->GetFileName();
  EXPECT_EQ(path, ConfGetRoot() + name + ".test");
  EXPECT_EQ(a->GetFileTime(), nullptr);
  EXPECT_TRUE(a->Save());
  std::tm date = {};
  date.tm_year = 124, date.tm_mon = 10, date.tm_mday = 22, date.tm_hour = 21;
  std::string texts;
  const std::int64_t evening = std::mktime(&date);
  for (const std::int64_t time : {evening, evening + 61, ThisSystem.untold_time}) {
    SetFileTime(path, time);
    const char* const text = a->GetFileTime();
    texts += text == nullptr ? "none" : text + std::string(", ");
  }
  EXPECT_EQ(texts, "Fri Nov 22 21:00:00 2024, Fri Nov 22 21:01:01 2024, none");
  std::filesystem::remove(path);
  ConfSet("", nullptr, 0, nullptr);
}
