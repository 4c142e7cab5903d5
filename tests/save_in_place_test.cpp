#include <confgrove/inspect.h>
#include <confgrove/save_in_place.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

#include "support.h"
#include "systems.h"

namespace {

// Carries out changes, one a line: "a.b = 5", "a = 1 2", "a = \"x\"", "a = @b", "-a" removes,
// "a > b" renames, "a # text" and "a ^ text" set the inline comment and the one above, "+x" imports
// a new configuration.
void Change(Config* config, const std::string& script) {
  std::istringstream lines(script);
  for (std::string line; std::getline(lines, line);) {
    if (line.front() == '-') {
      ASSERT_TRUE(config->RemoveSection(line.c_str() + 1)) << line;
      continue;
    }
    if (line.front() == '+') {
      ASSERT_TRUE(config->Import(ConfCreate(line.c_str() + 1, ConfCreateOpenOrNew))) << line;
      continue;
    }
    const std::size_t blank = line.find(' ');
    const std::string path = line.substr(0, blank), value = line.substr(blank + 3);
    switch (line.at(blank + 1)) {
      case '>': ASSERT_TRUE(config->SetName(value.c_str(), path.c_str())) << line; continue;
      case '#': ASSERT_TRUE(config->SetComment(value.c_str(), path.c_str(), true)); continue;
      case '^': ASSERT_TRUE(config->SetComment(value.c_str(), path.c_str())); continue;
      default: break;
    }
    if (value.front() == '"') {
      const std::string text = value.substr(1, value.size() - 2);
      ASSERT_TRUE(config->SetString(text.c_str(), path.c_str()));
    } else if (value.front() == '@') {
      ASSERT_TRUE(config->SetLink(value.c_str() + 1, path.c_str()));
    } else {
      std::istringstream numbers(value);
      std::vector<double> all;
      for (std::string number; numbers >> number;) all.push_back(std::stod(number));
      ASSERT_TRUE(
          config->SetDoubles(all.data(), static_cast<std::int32_t>(all.size()), path.c_str()));
    }
  }
}

const struct {
  const char *note, *before, *changes, *after;
} Cases[] = {
    {"one value", "a = 1\nb\t=  2  # two\nc = 3\n", "b = 7", "a = 1\nb\t=  7  # two\nc = 3\n"},
    {"equal values keep their bytes", "a = 1e3\nb = 5.\nc = 1d2\nd = [1 , 2]\n",
     "a = 1000\nb = 5\nc = 100\nd = 1 2", "a = 1e3\nb = 5.\nc = 1d2\nd = [1 , 2]\n"},
    {"digits", "a = 1\n", "a = 1234567.5", "a = 1234567.5\n"},
    {"large and small", "a = 1\n", "a = 1200000 0.00001 1e300 -0.0",
     "a = [1200000,0.00001,1e+300,-0]\n"},
    {"text, link, array", "a = 1\nb = 2\nc = 3\n", "b = \"x\"\nc = @a",
     "a = 1\nb = \"x\"\nc = @a\n"},
    {"one number of an array", "a = [ 1, /* two */ 2,\n  3, ]\n", "a = 1 5 3",
     "a = [ 1, /* two */ 5,\n  3, ]\n"},
    {"a longer array", "a = [1, 2]\n", "a = 1 2 3 4", "a = [1, 2, 3, 4]\n"},
    {"a shorter array", "a = [1, 2, 3, 4]\n", "a = 1 2", "a = [1, 2]\n"},
    {"tokens kept apart", "a=\"x\"e5=3\n", "a = 7", "a=7 e5=3\n"},
    {"a comment behind an array", "a = [1,\n 2] # tail\nb = 1\n", "a = 7",
     "a = 7\n # tail\nb = 1\n"},
    {"line ends of the file", "a = 1\r\nb = 2\r\n", "b = 3\nc = 4", "a = 1\r\nb = 3\r\nc = 4\r\n"},
    {"a value where there was none", "a\n{\n}\nb = 1\n", "a = 5", "a = 5\n{\n}\nb = 1\n"},
    // New sections.
    {"behind the last sibling", "a = 1\n\n# the end\n", "b = 2", "a = 1\nb = 2\n\n# the end\n"},
    {"the indentation of siblings", "x\n{\n  a=1\n}\n", "x.b = 2", "x\n{\n  a=1\n  b=2\n}\n"},
    {"on one line", "x { a = 1 }\n", "x.b = 2", "x { a = 1 b = 2 }\n"},
    {"a comment on one line", "x { a = 1 }\n", "x.b = 2\nx.b ^ c", "x { a = 1\n\t#c\n\tb = 2\n}\n"},
    {"an empty block", "x {}\n", "x.b = 2", "x {b = 2}\n"},
    {"an empty block on lines", "x {\n\t# none yet\n}\n", "x.b = 2",
     "x {\n\tb = 2\n\t# none yet\n}\n"},
    {"a block", "x {\n    a = 1\n}\n", "y.z = 2", "x {\n    a = 1\n}\ny {\n    z = 2\n}\n"},
    {"a block for a value", "a = 1 # one\nb = 2\n", "a.x = 1",
     "a = 1 # one\n{\n\tx = 1\n}\nb = 2\n"},
    {"a block within a line", "a = 1 b = 2\n", "a.x = 1", "a = 1 { x = 1 } b = 2\n"},
    {"no line end", "a = 1", "b = 2", "a = 1\nb = 2"},
    {"a link needs a line end", "a = 1", "b = @a", "a = 1\nb = @a\n"},
    {"behind a licence", "# licence\n", "a = 1", "# licence\n\na = 1\n"},
    {"behind imports", "#head\n$import \"base\"\n", "a = 1", "#head\n$import \"base\"\n\na = 1\n"},
    {"a block that stays blank", "a = 1\n", "b ^ note", "a = 1\n#note\nb\n{\n}\n"},
    {"behind a name that stands alone", "a = 1\nb\n", "c = 2", "a = 1\nb {}\nc = 2\n"},
    {"a name alone loses its comment", "x { b # c\n}\n", "x.b # ", "x { b {}\n}\n"},
    {"before a comment behind a block comment", "x\n{ } /* b\nc */ # a\na = 1\n", "x.b = 1",
     "x\n{\n\tb = 1\n} /* b\nc */ # a\na = 1\n"},
    // Sections that go.
    {"a body above the comment of the next", "a = 1\n{\n\tb = 2\n} # c\nd = 1\n", "-a.b",
     "a = 1\n # c\nd = 1\n"},
    {"a body below the comment of what is in it", "a = [1,\n2] # b\n{\n\tb = 1\n}\nc = 1\n", "-a.b",
     "a = [1,\n2] # b\n{\n}\nc = 1\n"},
    {"an array on the line of a comment", "x { b = 1 c = [1,\n2] } # d\nd = 1\n", "-x.c",
     "x { b = 1\n } # d\nd = 1\n"},
    {"from the line of an empty comment", "x { b = 1\n c = 2 } #\nd = 1\n", "-x.c",
     "x { b = 1\n }\nd = 1\n"},
    {"its lines and its comment", "# licence\n\n# about a\na = 1 # one\nb = 2\n", "-a",
     "# licence\n\nb = 2\n"},
    {"one group of blank lines stays", "a = 1\n\nb = 2\n\nc = 3\n", "-b", "a = 1\n\nc = 3\n"},
    {"the last one", "a = 1\n\nb = 2\n", "-b", "a = 1\n"},
    {"the last one without line end", "a = 1\nb = 2", "-b", "a = 1"},
    {"of a line", "a = 1 b = 2 # two\n", "-a", "b = 2 # two\n"},
    {"of a line, with its comment", "a = 1 b = 2 # two\n", "-b", "a = 1\n"},
    {"of a block on one line", "x { a = 1 b = 2 }\n", "-x.b", "x { a = 1 }\n"},
    {"a body that a value makes needless", "a = 1 # one\n{\n\tb = 2\n}\n", "-a.b", "a = 1 # one\n"},
    {"a block that is all there is", "x\n{\n\tb = 2\n}\n", "-x.b", "x\n{\n}\n"},
    {"gone and back", "a = 1 # one\nb = 2\n", "-a\na = 1", "b = 2\na = 1\n"},
    {"a comment behind a brace", "x { # one\n a = 1\n b = 2\n}\n", "-x.a", "x {\n b = 2\n}\n"},
    // Names and comments.
    {"a name", "ab = 1 # x\n", "ab > c", "c = 1 # x\n"},
    {"a name and its value", "a = 1\nb = 2\nc = 3\n", "b > x\nx = 7", "a = 1\nx = 7\nc = 3\n"},
    {"a comment above", "a = 1\n  b = 2\n", "b ^  one\n", "a = 1\n  # one\n  b = 2\n"},
    {"another one", "# licence\n\n# a\na = 1\n", "a ^ b", "# licence\n\n#b\na = 1\n"},
    {"within a line", "a = 1 b = 2\n", "b ^ two", "a = 1\n#two\nb = 2\n"},
    {"an inline comment", "a = 1  \nb = 2 # x\n", "a # one\nb # y", "a = 1 #one\nb = 2 #y\n"},
    {"an inline comment within a line", "a = 1 b = 2\n", "a # one", "a = 1 #one\nb = 2\n"},
    {"an inline comment goes", "a = 1 # one\n", "a # ", "a = 1\n"},
    {"an inline comment at a brace", "x {\n\ta = 1\n}\n", "x # c", "x #c\n{\n\ta = 1\n}\n"},
    {"an inline comment of a line", "x { a = 1 }\n", "x # c", "x { a = 1 } #c\n"},
    {"a head comment", "# old\n\n$import \"base\"\na = 1\n", "\n ^ new",
     "#new\n$import \"base\"\na = 1\n"},
    {"an import", "# licence\na = 1\n", "+other", "$import \"other\"\n\n# licence\na = 1\n"},
    {"a further import", "$import \"base\"\na = 1\n", "+other",
     "$import \"base\"\n$import \"other\"\na = 1\n"},
};

TEST(SaveInPlace, TouchesWhatDiffers) {
  const TempDir directory;
  directory.WriteFile("base.cfg", "base = 1\n");
  directory.WriteFile("other.cfg", "other = 1\n");
  for (const auto& c : Cases) {
    SCOPED_TRACE(c.note);
    const ConfigPtr config = ParseText("t", c.before);
    ASSERT_NE(config, nullptr);
    const TraceLog log;
    Change(config.get(), std::string(c.changes).substr(c.changes[0] == '\n' ? 1 : 0));
    const confgrove::SaveResult result = confgrove::SaveInPlace(config.get());
    EXPECT_EQ(result.reason, "");
    const std::string before = c.before;
    const bool has_line_ends = before.find_first_of("\r\n") != std::string::npos;
    const std::string after = has_line_ends ? c.after : WithLineEnds(c.after);
    EXPECT_EQ(directory.ReadFile("t.cfg"), after);
    EXPECT_EQ(confgrove::Apply(before, result.edits), after);
    EXPECT_EQ(confgrove::SaveInPlace(config.get()).outcome, confgrove::SaveOutcome::Unchanged);
  }
}

// What a file can't hold is refused, and the file stays as it is.
TEST(SaveInPlace, RefusesWhatCannotBeRead) {
  const struct {
    const char *changes, *section, *reason;
  } cases[] = {
      {"a = \"say \"hi\"\"", "a", "a text can't hold a double quote"},
      {"x.y = \"one\rtwo\"", "x.y", "a text can't hold a line end"},
      {"a = inf", "a", "a file can't hold an infinity, or what is no number"},
      {"a > b c", "b c", "its name is no name that can be read"},
      {"a = @9", "a", "its link is no path that can be read"},
      {"a # one\rtwo", "a", "a comment can't hold such a line end"},
      {"a = @z", "a", "what would be written can't be read: link to undefined section"},
      {"a = @b", "a", "what would be written can't be read: link to undefined section"},
  };
  const TempDir directory;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.changes);
    const ConfigPtr config = ParseText("t", "a = 1\nb = 2\n");
    Change(config.get(), c.changes);
    const confgrove::SaveResult result = confgrove::SaveInPlace(config.get());
    EXPECT_EQ(result.outcome, confgrove::SaveOutcome::Refused);
    EXPECT_EQ(result.section, c.section);
    EXPECT_EQ(result.reason, c.reason);
    EXPECT_TRUE(result.edits.empty());
    EXPECT_EQ(directory.ReadFile("t.cfg"), "a = 1\nb = 2\n");
  }
}

// A file that isn't as it was read is left alone, merged over or replaced.
TEST(SaveInPlace, OtherFiles) {
  using confgrove::Conflict;
  const struct {
    const char* note;
    const char* now;  // what the file has come to; null: it is gone
    Conflict conflict;
    const char *reason, *after;
  } cases[] = {
      {"changed", "a = 1\nc = 3\n", Conflict::Refuse, "the file has changed since it was read",
       "a = 1\nc = 3\n"},
      {"merged", "b  =  2\nc = 3\n", Conflict::MergeOver, "", "b  =  2\na = 7\n"},
      {"replaced", "/* gone */\n", Conflict::Replace, "", "b = 2\na = 7\n"},
      {"gone", nullptr, Conflict::Refuse, "the file has been removed since it was read", ""},
      {"made again", nullptr, Conflict::MergeOver, "", "b = 2\na = 7\n"},
      {"faulty", "b = 2\n=\n", Conflict::MergeOver, "it is faulty, line 2: unexpected '='",
       "b = 2\n=\n"},
      {"faulty, replaced", "=\n", Conflict::Replace, "", "b = 2\na = 7\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    const TempDir directory;
    const TraceLog log;
    const ConfigPtr config = ParseText("t", "a = 1\nb = 2\n");
    Change(config.get(), "-a\na = 7");
    std::remove(directory.Path("t.cfg").c_str());
    if (c.now != nullptr) directory.WriteFile("t.cfg", c.now);
    const confgrove::SaveResult result = confgrove::SaveInPlace(config.get(), c.conflict);
    EXPECT_EQ(result.reason, c.reason);
    EXPECT_TRUE(result.file_changed);
    const bool anew = c.now == nullptr || c.conflict == Conflict::Replace;
    EXPECT_EQ(c.after[0] != '\0' ? directory.ReadFile("t.cfg") : "",
              anew ? WithLineEnds(c.after) : c.after);
  }
}

// Blocks that are left without sections, and whether more than sections stands in them.
TEST(SaveInPlace, EmptiedBlocks) {
  const struct {
    const char *before, *changes, *emptied;
  } cases[] = {
      {"a { b = 1 }\n", "-a.b", "a"},
      {"a { b = 1 c = 2 }\n", "-a.b", ""},
      {"a = 1 { b = 1 }\n", "-a.b", ""},
      {"a { # b\n b = 1 # b\n } # a\n", "-a.b", "a"},
      {"a {\n# b\nb { c { d = 1 }\n# c\n} }\n", "-a.b.c", "a.b+"},
      {"a { b { c = 1 } }\n", "-a.b.c", "a.b"},
      {"a {\n# apart\n\nb = 1\n}\n", "-a.b", "a+"},
      {"a\n# above\n{ b = 1 }\n", "-a.b", "a+"},
      {"a { b = 1 } { /* c */ }\n", "-a.b", "a+"},
      {"a { b = 1 $import \"base\" }\n", "-a.b", "a+"},
      {"a { b = 1 }\nc = 1\n", "-a.b\na > d", "d"},
      {"a { }\nb = 1\n", "b = 2", ""},
  };
  const TempDir directory;
  directory.WriteFile("base.cfg", "base = 1\n");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before);
    const TraceLog log;
    const ConfigPtr config = ParseText("t", c.before);
    Change(config.get(), c.changes);
    const confgrove::SaveResult result = confgrove::SaveInPlace(config.get());
    EXPECT_FALSE(result.file_changed);
    std::string emptied;
    for (const confgrove::EmptiedBlock& block : result.emptied) {
      emptied += block.path + (block.holds_more ? "+" : "");
    }
    EXPECT_EQ(emptied, c.emptied);
  }
}

// The file is the one that was read, wherever the settings point, until the root has a new name.
TEST(SaveInPlace, ItsOwnFile) {
  const TempDir outer;
  const ConfigPtr config = ParseText("t", "a = 1 # one\n");
  {
    const TempDir elsewhere;
    Change(config.get(), "a = 2");
    EXPECT_TRUE(confgrove::SaveInPlace(config.get()));
    EXPECT_EQ(confgrove::OwnFile(config.get()), outer.Path("t.cfg"));
  }
  EXPECT_EQ(outer.ReadFile("t.cfg"), "a = 2 # one\n");
  ASSERT_TRUE(config->SetName("u", ""));
  EXPECT_TRUE(confgrove::SaveInPlace(config.get()));
  EXPECT_EQ(outer.ReadFile("u.cfg"), WithLineEnds("a = 2 # one\n"));
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

void CollectValues(Section* section, std::vector<Section*>* found) {
  for (std::int32_t i = 0; i < section->GetSectionCount(""); ++i) {
    Section* child = section->GetSection("", i);
    if (confgrove::OwnType(child) == SectionType::Number) found->push_back(child);
    if (confgrove::OwnType(child) == SectionType::String) found->push_back(child);
    CollectValues(child, found);
  }
}

// Sets the section to the value that it has, or to another one.
void SetValue(Section* section, bool another) {
  if (const char* text = section->GetString("")) {
    section->SetString(another ? "another" : std::string(text).c_str(), "");
    return;
  }
  std::vector<double> numbers(static_cast<std::size_t>(section->GetDoubles(nullptr, 0, "")));
  section->GetDoubles(numbers.data(), static_cast<std::int32_t>(numbers.size()), "");
  if (another) numbers.front() += 0.25;
  section->SetDoubles(numbers.data(), static_cast<std::int32_t>(numbers.size()), "");
}

// Every value of a file: set to itself it changes nothing, set to another it changes one line.
TEST(SaveInPlace, LineByLine) {
  const TempDir directory;
  const std::filesystem::path examples = CONFGROVE_EXAMPLES;
  std::vector<std::string> names = {"odd"};
  for (const auto& folder : {examples / "tidewatch", examples / "../tests/fuzz/corpus/parse"}) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      std::ifstream file(entry.path(), std::ios::binary);
      names.push_back(entry.path().stem().string());
      directory.WriteFile(names.back() + ".cfg",
                          std::string(std::istreambuf_iterator<char>(file), {}));
    }
  }
  directory.WriteFile(
      "odd.cfg",
      "# licence\r\n\r\n/* block\r\ncomment */\r\n# about a\r\na=1234567\t# seven\r\n"
      "\tx {y=[1, 2 /* two */,\r\n3] z = \"t\" w = 1e3 } # x\r\n\r\n# the end\r\n");
  const std::set<std::string> faulty = {"bytes",          "deep",          "end_of_array",
                                        "end_of_comment", "end_of_string", "faults",
                                        "imports",        "numbers",       "statements"};
  for (const std::string& name : names) {
    const TraceLog log;
    const ConfigPtr config = Open(name);
    ASSERT_EQ(config == nullptr, faulty.count(name) == 1) << name;
    if (config == nullptr) continue;
    std::vector<Section*> values;
    CollectValues(config.get(), &values);
    EXPECT_GT(values.size(), name == "seven_digits" ? 1U : 2U);
    for (Section* value : values) {
      SCOPED_TRACE(name + ": " + confgrove::PathOf(value));
      SetValue(value, false);
      EXPECT_EQ(confgrove::PreviewSave(config.get()).outcome, confgrove::SaveOutcome::Unchanged);
    }
    for (Section* value : values) {
      SCOPED_TRACE(name + ": " + confgrove::PathOf(value));
      const std::vector<std::string> old_lines = Lines(directory.ReadFile(name + ".cfg"));
      SetValue(value, true);
      ASSERT_EQ(confgrove::SaveInPlace(config.get()).outcome, confgrove::SaveOutcome::Written);
      const std::vector<std::string> lines = Lines(directory.ReadFile(name + ".cfg"));
      ASSERT_EQ(lines.size(), old_lines.size());
      int changed = 0;
      for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] == old_lines[i]) continue;
        ++changed;
        const std::size_t comment = old_lines[i].find('#');
        if (comment == std::string::npos) continue;
        EXPECT_EQ(lines[i].substr(lines[i].find('#')), old_lines[i].substr(comment));
      }
      EXPECT_EQ(changed, 1);
    }
  }
}

// The canonical layout keeps what a save would lose.
TEST(Format, LosesNothing) {
  const struct {
    const char *note, *before, *after;
  } cases[] = {
      {"layout", "a=1 b  =  [1 2] # x\n c{d=@a}", "a = 1\nb = [1,2] # x\nc\n{\n\td = @a\n}\n"},
      {"digits", "a = 1234567.50\nb = 1e3 # k\n", "a = 1234567.50\nb = 1e3        # k\n"},
      {"empty blocks", "a {}\nb = 1 { }\n", "a\n{\n}\nb = 1\n{\n}\n"},
      {"block comments", "a = 1 /* one */\n/* two */ b { c = [1 /* in */] }\n",
       "/* one */\na = 1\n\n/* two */\nb\n{\n\t/* in */\n\tc = 1\n}\n"},
      {"comments that stand alone", "x { a = 1\n# in x\n}\n# the end\n",
       "x\n{\n\ta = 1\n\n\t# in x\n}\n\n# the end\n"},
      {"an inline comment that another replaces", "a # one\n{ b = 1 } # two\n",
       "/* one*/\na # two\n{\n\tb = 1\n}\n"},
      {"cut off", "a = 1\n# half", "a = 1\n\n# half\n"},
      {"open to the end", "a = 1\n/* open", "a = 1\n/* open"},
      {"heads", "# one\n$import \"base\"\n# two\n$import \"other\"\na = 1\n",
       "# one\n\n$import \"base\"\n# two\n$import \"other\"\n\na = 1\n"},
      {"line ends", "a = 1\r\n", "a = 1\n"},
      {"a slash that the end of the file cuts off", "/x/", "/x\n/ \n"},
  };
  const TempDir directory;
  directory.WriteFile("base.cfg", "base = 1\n");
  directory.WriteFile("other.cfg", "other = 1\n");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.note);
    directory.WriteFile("t.cfg", c.before);
    EXPECT_EQ(confgrove::FormatFile(directory.Path("t.cfg")).reason, "");
    EXPECT_EQ(directory.ReadFile("t.cfg"), WithLineEnds(c.after));
    EXPECT_EQ(confgrove::FormatFile(directory.Path("t.cfg")).outcome,
              confgrove::SaveOutcome::Unchanged);
  }
}

// Two of the three bytes at the end are a line end, on every system.
TEST(Format, KeepsACarriageReturnInFrontOfALineEnd) {
  const TempDir directory;
  directory.WriteFile("t.cfg", "/* open\r\r\n");
  EXPECT_EQ(confgrove::FormatFile(directory.Path("t.cfg")).outcome,
            confgrove::SaveOutcome::Unchanged);
  EXPECT_EQ(directory.ReadFile("t.cfg"), "/* open\r\r\n");
}

}  // namespace
