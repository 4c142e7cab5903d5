// Looking without a trace: silent look-ups, own kinds, paths, and places in files.
#include <confgrove/inspect.h>
#include <gtest/gtest.h>

#include "support.h"

namespace {

using confgrove::Place;

std::string Text(const Place& place, const TempDir& dir) {
  const std::string file = place.file.empty() ? "" : place.file.substr(dir.Path().size());
  if (place.line == 0) return file;
  return file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + " " +
         std::to_string(place.offset) + "+" + std::to_string(place.length);
}

}  // namespace

TEST(Inspect, LooksAsGetSectionDoesButLeavesNothing) {
  TempDir dir;
  dir.WriteFile("base.cfg", "low { deep = 1 }");
  dir.WriteFile("t.cfg", "$import \"base\"\na { b = @low.deep c = \"x\" }\ne\n");
  const ConfigPtr quiet = Open("t"), loud = Open("t");
  Section* const block = quiet->GetSection("a");
  for (const char* path : {"", "a", "a.b", " a.b ", "low.deep", "a.x", "no.such", "1a", ".a",
                           "a..b", "a.", "a-b", " ", "base", "e.f"}) {
    SCOPED_TRACE(path);
    TraceLog log;
    Section* const found = confgrove::FindSection(quiet.get(), path);
    Section* const below = confgrove::FindSection(block, path);
    EXPECT_EQ(log.Text(), "");
    Section* const expected = loud->GetSection(path);
    ASSERT_EQ(found != nullptr, expected != nullptr);
    if (found != nullptr) {
      EXPECT_STREQ(found->GetName(""), expected->GetName(""));
    }
    EXPECT_EQ(below != nullptr, loud->GetSection("a")->GetSection(path) != nullptr);
  }
  const ConfigPtr untouched = Open("t");
  EXPECT_EQ(Saved(quiet.get()), Saved(untouched.get()));
}

TEST(Inspect, TellsKindsPathsAndImports) {
  TempDir dir;
  dir.WriteFile("z.cfg", "low { deep = 1 }");
  dir.WriteFile("b.cfg", "n=1");
  dir.WriteFile("t.cfg", "$import \"z\" $import \"b\"\na { b = @low.deep c = \"x\" }");
  const ConfigPtr config = Open("t");
  using confgrove::LinkTarget, confgrove::PathOf, confgrove::OwnType;
  EXPECT_EQ(OwnType(config->GetSection("a.b")), SectionType::Link);
  EXPECT_STREQ(LinkTarget(config->GetSection("a.b")), "low.deep");
  EXPECT_EQ(LinkTarget(config->GetSection("a.c")), nullptr);
  EXPECT_EQ(LinkTarget(config.get()), nullptr);
  EXPECT_EQ(PathOf(config->GetSection("a.b")), "a.b");
  EXPECT_EQ(PathOf(config->GetSection("low.deep")), "low.deep");
  EXPECT_EQ(PathOf(config.get()), "");
  const std::vector<Config*> imports = confgrove::Imports(config.get());
  ASSERT_EQ(imports.size(), 2U);
  EXPECT_STREQ(imports[0]->GetName(""), "b");
  EXPECT_EQ(confgrove::ConfigOf(config->GetSection("low.deep")), imports[1]);
  EXPECT_EQ(confgrove::ConfigOf(config->GetSection("a.b")), config.get());
  delete imports[0];
  EXPECT_EQ(confgrove::Imports(config.get()).size(), 1U);
}

TEST(OwnFile, IsTheOneThatWasOpenedUnlessRenamed) {
  TempDir dir;
  dir.WriteFile("base.cfg", "x=1");
  dir.WriteFile("t.cfg", "$import \"base\"\n");
  const ConfigPtr config = Open("t"), made = Open("new", ConfCreateNew);
  Config* const base = confgrove::Imports(config.get()).front();
  {
    const TempDir elsewhere;
    ConfSet(elsewhere.Path().c_str(), "conf", 0, nullptr);
    EXPECT_EQ(confgrove::OwnFile(config.get()), dir.Path("t.cfg"));
    EXPECT_EQ(confgrove::OwnFile(base), dir.Path("base.cfg"));
    EXPECT_EQ(confgrove::OwnFile(made.get()), dir.Path("new.cfg"));
    EXPECT_EQ(Text(confgrove::Where(base, "x"), dir), "base.cfg:1:1 0+1");
    EXPECT_EQ(ConfGetRoot(), elsewhere.Path());
    config->SetName("other", "");
    EXPECT_EQ(confgrove::OwnFile(config.get()), elsewhere.Path("other.conf"));
    config->SetName("t", "");
  }
  EXPECT_EQ(confgrove::OwnFile(config.get()), dir.Path("t.cfg"));
}

const struct {
  const char *note, *text, *path, *place;
} PlaceCases[] = {
    {"first byte", "a=1", "a", "t.cfg:1:1 0+1"},
    {"deep", "a {\n\tbb { c = 1\n d=2 } }", "a.bb.d", "t.cfg:3:2 17+1"},
    {"of the block", "a {\n\tbb { c = 1\n d=2 } }", "a.bb", "t.cfg:2:2 5+2"},
    {"the same name twice", "a { x = 1 } b { x = 2 }", "b.x", "t.cfg:1:17 16+1"},
    {"body entered again", "a { x = 1 } { y = 2 } b = 3", "a.y", "t.cfg:1:15 14+1"},
    {"CR LF", "# one\r\n\r\na = 1\r\nb = 2\r\n", "b", "t.cfg:4:1 16+1"},
    {"CR alone", "a = 1\rb = 2", "b", "t.cfg:2:1 6+1"},
    {"CR LF and CR", "\ra = 1\r\n\r  b = 2", "b", "t.cfg:4:3 11+1"},
    {"behind UTF-8", "a = \"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8C\xB3\" b = 2", "b", "t.cfg:1:11 16+1"},
    {"8-bit text", "\xE0 = \"\xC3\xA4\" b = 2", "b", "t.cfg:1:10 9+1"},
    {"8-bit name", "\xE0\xE1 = 1", "\xE0\xE1", "t.cfg:1:1 0+2"},
    {"behind comments", "/* a\n = */ a = /* b */ 1 # b\nb = 1", "b", "t.cfg:3:1 29+1"},
    {"a link itself", "a = 1\nb = @a\n", "b", "t.cfg:2:1 6+1"},
    {"in an import", "$import \"base\" a = 1", "far.away", "base.cfg:2:3 9+4"},
    {"none", "a = 1", "b", ""},
    {"a top", "a = 1", "", "t.cfg"},
};

TEST(Where, PlaceOfAName) {
  for (const auto& c : PlaceCases) {
    SCOPED_TRACE(c.note);
    const TempDir dir;
    dir.WriteFile("base.cfg", "far {\r\n  away=1}");
    const ConfigPtr config = ParseText("t", c.text);
    TraceLog log;
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(Text(confgrove::Where(config.get(), c.path), dir), c.place);
    EXPECT_EQ(log.Text(), "");
  }
}

TEST(Where, WhatTheFileDoesNotHoldHasItsFileAlone) {
  const TempDir dir;
  const ConfigPtr config = ParseText("t", "a = 1\nb = 2\nc = 3");
  config->SetInt(1, "made");
  config->SetName("renamed", "b");
  dir.WriteFile("t.cfg", "\nc = 3\nb = 2\na = 1");
  std::string all;
  const std::vector<Section*> sections = {config->GetSection("a"), config->GetSection("made"),
                                          config->GetSection("renamed"), config->GetSection("c")};
  for (const Place& place : confgrove::Where(sections)) all += Text(place, dir) + "; ";
  EXPECT_EQ(all, "t.cfg:4:1 13+1; t.cfg; t.cfg; t.cfg:2:1 1+1; ");
  TraceLog log;
  dir.WriteFile("t.cfg", "a = = 1");
  EXPECT_EQ(Text(confgrove::Where(config.get(), "a"), dir), "t.cfg");
  std::filesystem::remove(dir.Path("t.cfg"));
  EXPECT_EQ(Text(confgrove::Where(config.get(), "a"), dir), "t.cfg");
  EXPECT_EQ(log.Text(), "");
}
