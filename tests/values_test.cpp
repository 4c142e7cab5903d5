// Settings as C++ values: what is read, what is found fault with and how it is told, what is
// written.
#include <confgrove/values.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>

#include "support.h"

namespace {

using confgrove::Fault;
using confgrove::Reader;

// The faults in lines, without the directory.
std::string Told(const std::vector<Fault>& faults, const TempDir& dir) {
  std::string text = confgrove::ToText(faults);
  for (std::size_t at; (at = text.find(dir.Path())) != std::string::npos;) {
    text.erase(at, dir.Path().size());
  }
  return text;
}

enum class Mode : std::int64_t { Fast, Safe, Nameless };
constexpr confgrove::Named<Mode> ModeNames[] = {{"fast", Mode::Fast}, {"safe", Mode::Safe}};
constexpr auto& NamesOf(Mode /*unused*/) { return ModeNames; }

const struct {
  const char* note;
  const char* text;
  void (*read)(Reader& reader);
  const char* faults;
} FaultCases[] = {
    {"missing", "\na { }", [](Reader& r) { r.Require<int>("port", confgrove::InRange(1, 9)); },
     "t.cfg: error: port: missing, wanted a whole number from 1 to 9\n"},
    {"missing in a block", "\na { b = 1 }", [](Reader& r) { r.Require<std::string>("a.c.d"); },
     "t.cfg:2:1: error: a.c.d: missing, wanted a text\n"},
    {"a text for a number", "a = \"1\"", [](Reader& r) { r.Get("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number, found \"1\"\n"},
    {"a number for a text", "a = 1.5", [](Reader& r) { r.Get<std::string>("a", ""); },
     "t.cfg:1:1: error: a: wanted a text, found 1.5\n"},
    {"a block for a number", "x a { b = 1 }", [](Reader& r) { r.Get("a", 1.0); }, nullptr},
    {"a block for a truth", "a { b = 1 }", [](Reader& r) { r.Get("a", true); },
     "t.cfg:1:1: error: a: wanted 0 or 1, found a block\n"},
    {"another truth", "a = 2", [](Reader& r) { r.Get("a", true); },
     "t.cfg:1:1: error: a: wanted 0 or 1, found 2\n"},
    {"no value for numbers", "a { }", [](Reader& r) { r.Get("a", std::vector<int>()); },
     "t.cfg:1:1: error: a: wanted whole numbers, found no value\n"},
    {"a fraction", "a = 1.5", [](Reader& r) { r.Get("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number, found 1.5\n"},
    {"a fraction in an array", "a = [1, 2.5]", [](Reader& r) { r.Get("a", std::vector<long>()); },
     "t.cfg:1:1: error: a: wanted whole numbers, found [1, 2.5]\n"},
    {"too much for the type", "a = 1e10", [](Reader& r) { r.Get<std::int32_t>("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number from -2147483648 to 2147483647, "
     "found 10000000000\n"},
    {"below an unsigned one", "a = -1", [](Reader& r) { r.Get<std::uint8_t>("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number from 0 to 255, found -1\n"},
    {"more than doubles tell apart", "a = 9007199254740993",
     [](Reader& r) { r.Get<std::int64_t>("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number from -9007199254740991 to 9007199254740991, "
     "found 9007199254740992\n"},
    {"infinite", "a = 1e400", [](Reader& r) { r.Get("a", 1.0); },
     "t.cfg:1:1: error: a: wanted a number from -1.7976931348623157e+308 to "
     "1.7976931348623157e+308, found inf\n"},
    {"out of a range", "\n  a = 70000", [](Reader& r) { r.Get("a", 1, confgrove::InRange(1, 10)); },
     "t.cfg:2:3: error: a: wanted a whole number from 1 to 10, found 70000\n"},
    {"too small", "a = 0", [](Reader& r) { r.Get("a", 1.0F, confgrove::AtLeast(0.5)); },
     "t.cfg:1:1: error: a: wanted a number, 0.5 or more, found 0\n"},
    {"too large in an array", "a = [1, 2, 3]",
     [](Reader& r) { r.Get("a", std::vector<double>(), confgrove::AtMost(2)); },
     "t.cfg:1:1: error: a: wanted numbers, 2 or less, found [1, 2, 3]\n"},
    {"an array for a number", "a = [1, 2]", [](Reader& r) { r.Get("a", 1); },
     "t.cfg:1:1: error: a: wanted a whole number, found [1, 2]\n"},
    {"too few", "a = [1, 2]", [](Reader& r) { r.Get("a", std::array<double, 3>()); },
     "t.cfg:1:1: error: a: wanted 3 numbers, found [1, 2]\n"},
    {"too many, a long array", "a = [1 2 3 4 5 6 7 8 9]",
     [](Reader& r) { r.Get("a", std::vector<int>(), confgrove::Length(1, 3)); },
     "t.cfg:1:1: error: a: wanted whole numbers, length 1 to 3, "
     "found [1, 2, 3, 4, 5, 6, 7, 8, ...]\n"},
    {"an empty text", "a = \"\"",
     [](Reader& r) { r.Get<std::filesystem::path>("a", "x", confgrove::NotEmpty()); },
     "t.cfg:1:1: error: a: wanted a text, not empty, found \"\"\n"},
    {"no such enumerator", "a = \"fats\"", [](Reader& r) { r.Get("a", Mode::Fast); },
     "t.cfg:1:1: error: a: wanted \"fast\" or \"safe\", found \"fats\"\n"},
    {"not among texts", "a = \"z\"",
     [](Reader& r) { r.Get<std::string>("a", "x", confgrove::OneOf("w", "x", "y")); },
     "t.cfg:1:1: error: a: wanted a text, \"w\", \"x\" or \"y\", found \"z\"\n"},
    {"not among numbers", "a = 3", [](Reader& r) { r.Get("a", 1, confgrove::OneOf(1, 2)); },
     "t.cfg:1:1: error: a: wanted a whole number, 1 or 2, found 3\n"},
    {"against the host's own rule", "a = 3",
     [](Reader& r) {
       r.Get("a", 2, confgrove::Must([](int number) { return number % 2 == 0; }, "even"));
     },
     "t.cfg:1:1: error: a: wanted a whole number, even, found 3\n"},
    {"a duration", "a = \"1s\"", [](Reader& r) { r.Get("a", std::chrono::milliseconds(5)); },
     "t.cfg:1:1: error: a: wanted a whole number of milliseconds, found \"1s\"\n"},
    {"a wrong value by a link", "b = 1.5 a = @b\n", [](Reader& r) { r.Get("a", 1); },
     "t.cfg:1:9: error: a: wanted a whole number, found 1.5, by a link to b\n"},
    {"the host's word", "a { b = 1 c = 2 }",
     [](Reader& r) { r.Block("a").Refuse("b", "must not be below c"); },
     "t.cfg:1:5: error: a.b: must not be below c\n"},
    {"an old name", "a { old = 5 }",
     [](Reader& r) {
       for (int i = 0; i < 2; ++i) r.Get("a.now", 1, confgrove::WasNamed("a.old"));
     },
     "t.cfg:1:5: warning: a.old: is called a.now now\n"},
    {"a value for a block", "a { b = 1 c { } }", [](Reader& r) { r.Blocks("a"); },
     "t.cfg:1:5: error: a.b: wanted a block, found 1\n"},
    {"no entries", "a { }",
     [](Reader& r) { r.Get("a", std::map<std::string, int>(), confgrove::NotEmpty()); },
     "t.cfg:1:1: error: a: wanted values by name, not empty, found 0\n"},
    {"several, by place", "a = 1.5\nb = 1.5",
     [](Reader& r) {
       r.Require<int>("c");
       r.Get("b", 1);
       r.Get("a", 1);
       r.Get("a", 1);
     },
     "t.cfg: error: c: missing, wanted a whole number\n"
     "t.cfg:1:1: error: a: wanted a whole number, found 1.5\n"
     "t.cfg:2:1: error: b: wanted a whole number, found 1.5\n"},
    {"in an import, control bytes", "$import \"base\"", [](Reader& r) { r.Get("far.a", 1); },
     "base.cfg:2:1: error: far.a: wanted a whole number, found \"?\"\n"},
};

}  // namespace

TEST(Reader, TellsEachKindOfFault) {
  for (const auto& c : FaultCases) {
    SCOPED_TRACE(c.note);
    const TempDir dir;
    dir.WriteFile("base.cfg", "far {\na = \"\t\" }");
    if (c.faults == nullptr) continue;
    const ConfigPtr config = ParseText("t", c.text);
    ASSERT_NE(config, nullptr);
    TraceLog log;
    Reader reader(*config);
    c.read(reader);
    EXPECT_EQ(Told(reader.Faults(), dir), c.faults);
    EXPECT_EQ(log.Text(), "");
  }
}

TEST(Reader, TellsLinksThatLeadNowhere) {
  const TempDir dir;
  const ConfigPtr config = ParseText("t", "b = 1 a = @b c = @a\n");
  Reader reader(*config);
  EXPECT_EQ(reader.Get("c", 2), 1);
  config->SetLink("gone", "b");
  reader.Get("a", 1);
  config->SetLink("c", "b");
  reader.Get("c", 1);
  reader.Get("a", 1);
  EXPECT_EQ(
      Told(reader.Faults(), dir),
      "t.cfg:1:7: error: a: wanted a whole number, found a link to b, which leads nowhere\n"
      "t.cfg:1:14: error: c: wanted a whole number, found a link to a, which leads nowhere\n");
}

TEST(Reader, ReadsEachType) {
  const ConfigPtr config = ParseText(
      "t", "i=-5 d=0.25 t=1 s=\"text\" n=[1,2,3] l=[3] e=\"safe\" m=1500 b { x=1 y=2 } k=@i\n");
  Reader reader(*config);
  EXPECT_EQ(reader.Get("i", 0), -5);
  EXPECT_EQ(reader.Get<std::int64_t>("k", 0), -5);
  EXPECT_EQ(reader.Get("d", 0.0), 0.25);
  EXPECT_EQ(reader.Get("d", 0.0F), 0.25F);
  EXPECT_TRUE(reader.Get("t", false));
  EXPECT_EQ(reader.Get<std::string>("s", ""), "text");
  EXPECT_EQ(reader.Get<std::string_view>("s", ""), "text");
  EXPECT_EQ(reader.Require<std::filesystem::path>("s"), "text");
  EXPECT_EQ(reader.Get("n", std::vector<int>()), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(reader.Get("l", std::vector<double>()), std::vector<double>{3});
  EXPECT_EQ((reader.Require<std::array<short, 3>>("n")), (std::array<short, 3>{1, 2, 3}));
  EXPECT_EQ(reader.Get("e", Mode::Fast), Mode::Safe);
  EXPECT_EQ(reader.Get("m", std::chrono::milliseconds()), std::chrono::seconds(1) * 1.5);
  EXPECT_EQ(reader.Require<std::optional<int>>("i"), -5);
  EXPECT_EQ(reader.Get<std::optional<int>>("none", std::nullopt), std::nullopt);
  EXPECT_EQ((reader.Require<std::map<std::string, int>>("b")),
            (std::map<std::string, int>{{"x", 1}, {"y", 2}}));
  EXPECT_EQ(reader.Get("none.at.all", 7), 7);
  EXPECT_EQ(confgrove::ToText(reader.Faults()), "");
  EXPECT_EQ(confgrove::ToText(reader.Unread()), "");
}

TEST(Reader, SeesABlockThroughItsLayers) {
  const TempDir dir;
  dir.WriteFile("base.cfg", "up { b { port=2 host=\"b\" } c { host=\"c\" } } off = 1");
  dir.WriteFile("mid.cfg", "$import \"base\" up { a { port=9 } }");
  const ConfigPtr config = ParseText("t", "$import \"mid\"\nup { b { port=3 } a { host=\"a\" } }");
  TraceLog log;
  Reader reader(*config);
  std::string all;
  for (auto& [name, block] : reader.Blocks("up")) {
    all += name + " " + block.Get<std::string>("host", "?") + " ";
    all += std::to_string(block.Get("port", 80)) + "; ";
  }
  EXPECT_EQ(all, "b b 3; a a 9; c c 80; ");
  Reader below(*config->GetSection("up.b"));
  EXPECT_EQ(below.Get<std::string>("host", ""), "b");
  EXPECT_EQ(Told(reader.Unread(), dir), "base.cfg:1:45: warning: off: unknown setting\n");
  EXPECT_EQ(log.Text(), "");
}

TEST(Reader, FollowsLinksToBlocks) {
  const ConfigPtr config = ParseText("t", "a { x = 1 } b = @a c { d = @a }");
  Reader reader(*config);
  EXPECT_EQ(reader.Block("b").Get("x", 0), 1);
  EXPECT_EQ(reader.Blocks("c").front().reader.Get("x", 0), 1);
  EXPECT_EQ(confgrove::ToText(reader.Unread()), "");
}

TEST(Reader, NamesWhatNobodyReads) {
  const TempDir dir;
  const ConfigPtr config = ParseText(
      "t",
      "prot = 1\nlimits { brust = 1 most = 2 }\nold { a = 1 b { c = 1 } }\nrate = 5\nxy = 1\n"
      "whole { a = 1 }\nbloks { n = 1 }");
  Reader reader(*config);
  reader.Get("port", 1);
  reader.Get("limits.burst", 1);
  reader.Get("limits.rate", 1);
  reader.Get("limits.most", 1);
  reader.Get("xa", 1);  // as near as the next: no guess
  reader.Get("xb", 1);
  reader.Expect("whole.a");
  reader.Block("blocks").Get("n", 1);
  EXPECT_EQ(Told(reader.Unread(), dir),
            "t.cfg:1:1: warning: prot: unknown setting; did you mean port?\n"
            "t.cfg:2:10: warning: limits.brust: unknown setting; did you mean burst?\n"
            "t.cfg:3:1: warning: old: unknown setting\n"
            "t.cfg:4:1: warning: rate: unknown setting; did you mean limits.rate?\n"
            "t.cfg:5:1: warning: xy: unknown setting\n"
            "t.cfg:7:1: warning: bloks: unknown setting; did you mean blocks?\n");
  EXPECT_FALSE(confgrove::HasErrors(reader.Unread()));
  EXPECT_TRUE(confgrove::HasErrors(reader.Unread(confgrove::Severity::Error)));
}

TEST(Reader, LeavesNothingForASave) {
  const TempDir dir;
  dir.WriteFile("base.cfg", "c { d = 1 }");
  const ConfigPtr read = ParseText("t", "$import \"base\"\na = 1\nb { }\n"), other = Open("t");
  TraceLog log;
  Reader reader(*read);
  for (int i = 0; i < 1000; ++i) {
    const std::string path = "b.x" + std::to_string(i % 7) + ".y";
    reader.Get(path, 1);
    reader.Get("a." + path, std::vector<int>());
    reader.Get<std::string>("c.d.e", "");
    reader.Block("a.b.c").Blocks("d");
  }
  reader.Unread();
  EXPECT_EQ(log.Text(), "");
  EXPECT_EQ(Saved(read.get()), Saved(other.get()));
}

namespace {

struct Tls {
  std::string key;
  std::vector<double> ciphers{1, 2};
};
template <typename Fields>
void Describe(Fields& fields, Tls& tls) {
  fields("key", tls.key, confgrove::Required(), confgrove::NotEmpty(), "The private key");
  fields("ciphers", tls.ciphers, confgrove::InRange(1, 9));
}

struct Upstream {
  std::string host;
  int port = 80;
  double weight = 1;
  std::optional<Tls> tls;
};
template <typename Fields>
void Describe(Fields& fields, Upstream& upstream) {
  fields("host", upstream.host, confgrove::Required(), "Name or address of the machine.");
  fields("port", upstream.port, confgrove::InRange(1, 65535), "TCP port.");
  fields("weight", upstream.weight, confgrove::AtLeast(0), "Share of the requests.");
  fields("tls", upstream.tls, "Encryption.");
}

struct Service {
  std::string name = "service";
  Mode mode = Mode::Fast;
  std::chrono::seconds timeout{30};
  std::vector<int> ports;
  std::optional<std::string> motto;
  Tls tls;
  std::map<std::string, Upstream> upstreams;
  std::vector<Upstream> spares;
};
template <typename Fields>
void Describe(Fields& fields, Service& service) {
  fields("name", service.name, confgrove::WasNamed("title"), "How it calls itself. One | two.");
  fields("mode", service.mode);
  fields("timeout", service.timeout, confgrove::AtLeast(1));
  fields("ports", service.ports);
  fields("motto", service.motto, "Shown at the top.");
  fields("tls", service.tls);
  fields("upstreams", service.upstreams, "Who answers.");
  fields("spares", service.spares);
}

const char FaultyService[] = R"(title = "old"
mode = "slow"
tls {
  key = ""
  ciphers = [3, 12]
  extra { a = 1 b = 2 }
}
upstreams {
  main { host = "a" prot = 81 }
  spare {
    port = 0.5
    tls { ciphers = "x" }
  }
}
spares {
  one { host = 5 }
}
)";

}  // namespace

TEST(Structs, TellAllFaultsInOneRun) {
  const TempDir dir;
  const ConfigPtr config = ParseText("t", FaultyService);
  Service service;
  const std::vector<Fault> faults = confgrove::Read(*config, service);
  EXPECT_EQ(Told(faults, dir),
            "t.cfg:1:1: warning: title: is called name now\n"
            "t.cfg:2:1: error: mode: wanted \"fast\" or \"safe\", found \"slow\"\n"
            "t.cfg:4:3: error: tls.key: wanted a text, not empty, found \"\"\n"
            "t.cfg:5:3: error: tls.ciphers: wanted numbers from 1 to 9, found [3, 12]\n"
            "t.cfg:10:3: error: upstreams.spare.host: missing, wanted a text\n"
            "t.cfg:11:5: error: upstreams.spare.port: wanted a whole number from 1 to 65535, "
            "found 0.5\n"
            "t.cfg:12:5: error: upstreams.spare.tls.key: missing, wanted a text, not empty\n"
            "t.cfg:12:11: error: upstreams.spare.tls.ciphers: wanted numbers from 1 to 9, "
            "found \"x\"\n"
            "t.cfg:16:9: error: spares.one.host: wanted a text, found 5\n"
            "t.cfg:6:3: warning: tls.extra: unknown setting\n"
            "t.cfg:9:21: warning: upstreams.main.prot: unknown setting; did you mean port?\n");
  EXPECT_EQ(service.name, "old");
  EXPECT_EQ(service.upstreams.at("main").host, "a");
  EXPECT_EQ(service.upstreams.at("spare").port, 80);
  EXPECT_EQ(confgrove::Excerpt(faults[2].place), "  key = \"\"\n  ^^^\n");
}

TEST(Structs, WriteWhatDiffers) {
  const TempDir dir;
  dir.WriteFile("base.cfg", "upstreams { far { host = \"f\" } }");
  const char text[] =
      "$import \"base\"\n# kept\nname = \"service\" near = 30\ntimeout = @near # by link\n"
      "tls { key = \"k\" }\nupstreams { main { host = \"m\" } gone { host = \"g\" } }\n"
      "spares { one { host = \"1\" } two { host = \"2\" } }\n";
  const ConfigPtr config = ParseText("t", text);
  Service service;
  ASSERT_EQ(Told(confgrove::Read(*config, service), dir), "");
  const std::string before = DumpTree(config.get());
  EXPECT_EQ(Told(confgrove::Write(*config, service), dir), "");
  EXPECT_EQ(DumpTree(config.get()), before);

  service.mode = Mode::Safe;
  service.ports = {1, 2};
  service.motto = "all well";
  service.upstreams.erase("gone");
  service.upstreams["main"].weight = 0.1;
  service.upstreams["fresh"].host = "n";
  service.spares.pop_back();
  EXPECT_EQ(Told(confgrove::Write(*config, service), dir), "");
  EXPECT_EQ(DumpTree(config.get()),
            "( kept|)name=\"service\" near=30 timeout=30#( by link) tls{key=\"k\"} "
            "upstreams{main{host=\"m\" weight=0.1} fresh{host=\"n\" port=80 weight=1}} "
            "spares{one{host=\"1\"}} mode=\"safe\" ports=[1,2] motto=\"all well\"");
  Service again;
  confgrove::Reader(*config).Read(again);
  EXPECT_EQ(again.upstreams.size(), 3U);

  service.motto.reset();
  service.spares.resize(3);
  service.spares[2].host = "\"";
  service.upstreams.erase("far");
  service.upstreams["a.b"] = {};
  service.mode = Mode::Nameless;
  EXPECT_EQ(
      Told(confgrove::Write(*config, service), dir),
      "t.cfg: error: mode: the value has no name\n"
      "t.cfg: error: upstreams: no file can hold the name \"a.b\"\n"
      "t.cfg: error: upstreams.far: an imported file has it, from which nothing can be removed\n"
      "t.cfg: error: spares.spares3.host: a text in a file can't hold a quote, a line end or a "
      "NUL byte\n");
  EXPECT_EQ(config->GetString("motto"), nullptr);
  EXPECT_STREQ(config->GetString("spares.spares2.host"), "");
}

TEST(Structs, SampleIsASoundFileWithTheDefaults) {
  const char sample[] = R"(# Whole numbers.
# ports = [0]

# Shown at the top. A text.
# motto = ""

# Who answers. Blocks.
# upstreams
# {
# 	name
# 	{
# 		# Encryption. A block.
# 		# tls
# 		# {
# 		# 	# The private key. A text, not empty. Required.
# 		# 	key = ""

# 		# 	# Numbers from 1 to 9.
# 		# 	ciphers = [1, 2]
# 		# }

# 		# Name or address of the machine. A text. Required.
# 		host = ""

# 		# TCP port. A whole number from 1 to 65535.
# 		port = 80

# 		# Share of the requests. A number, 0 or more.
# 		weight = 1
# 	}
# }
)";
  const std::string made = confgrove::Sample<Service>();
  EXPECT_EQ(made.substr(0, sizeof sample - 1), sample);
  const ConfigPtr config = ParseText("t", made);
  ASSERT_NE(config, nullptr);
  const TempDir dir;
  Service service;
  EXPECT_EQ(confgrove::Message(confgrove::Read(*config, service).at(0)),
            "tls.key: wanted a text, not empty, found \"\"");
  EXPECT_EQ(service.timeout, std::chrono::seconds(30));
}

TEST(Structs, ReferenceIsATable) {
  EXPECT_EQ(confgrove::Reference<Upstream>(),
            "| Setting | Kind | Range | Default | Meaning |\n"
            "| --- | --- | --- | --- | --- |\n"
            "| `host` | a text |  | required | Name or address of the machine. |\n"
            "| `port` | a whole number | from 1 to 65535 | `80` | TCP port. |\n"
            "| `weight` | a number | 0 or more | `1` | Share of the requests. |\n"
            "| `tls` | a block |  | none | Encryption. |\n"
            "| `tls.key` | a text | not empty | required | The private key |\n"
            "| `tls.ciphers` | numbers | from 1 to 9 | `[1, 2]` |  |\n");
  const std::string all = confgrove::Reference<Service>();
  EXPECT_NE(all.find("How it calls itself. One \\| two. |\n"), std::string::npos);
  EXPECT_NE(all.find("| `ports` | whole numbers |  | none |  |\n"), std::string::npos);
  EXPECT_NE(all.find("| `spares.*.tls.key` |"), std::string::npos);
}

TEST(Set, RefusesWhatAFileCannotHold) {
  const TempDir dir;
  const ConfigPtr config = ParseText("t", "a { b = 1 }"),
                  locked = Open("t", ConfCreateOpenReadOnly);
  Section* const a = config->GetSection("a");
  using confgrove::Set;
  TraceLog log(0);
  EXPECT_TRUE(Set(*config, "c", 5) && Set(*config, "a.f", 0.1F) && Set(*a, "g", Mode::Safe) &&
              Set(*a, "h", std::chrono::minutes(2)) && Set(*a, "i", std::array<int, 2>{1, 2}) &&
              Set(*a, "j", "text") && Set(*a, "k", std::filesystem::path("p")) &&
              Set(*a, "", true));
  EXPECT_EQ(DumpTree(config.get()), "a=1{b=1 f=0.1 g=\"safe\" h=2 i=[1,2] j=\"text\" k=\"p\"} c=5");
  std::string deep = "x";
  for (int i = 0; i < 1000; ++i) deep += ".x";
  const std::pair<confgrove::SetResult, const char*> refusals[] = {
      {Set(*config, "", 1), "the top of a file holds no value"},
      {Set(*config, "1a", 1), "no file can hold the name \"1a\""},
      {Set(*config, "a..b", 1), "no file can hold the name \"a..b\""},
      {Set(*config, "a.", 1), "no file can hold the name \"a.\""},
      {Set(*config, deep, 1), "sections can't be nested deeper than 1000"},
      {Set(*config, "x", 1e300 * 1e300), "a file can hold finite numbers alone"},
      {Set(*config, "x", std::int64_t{1} << 53),
       "a file can't hold whole numbers beyond 9007199254740991"},
      {Set(*config, "x", std::vector<int>()), "a file can't hold an empty array"},
      {Set(*config, "x", "a\"b"), "a text in a file can't hold a quote, a line end or a NUL byte"},
      {Set(*config, "x", std::string(1, '\0')),
       "a text in a file can't hold a quote, a line end or a NUL byte"},
      {Set(*config, "x", Mode::Nameless), "the value has no name"},
      {Set(*locked, "x", 1), "the section is read-only"},
  };
  for (const auto& [result, reason] : refusals) EXPECT_EQ(result.reason, reason);
  EXPECT_EQ(config->GetSectionCount(""), 2);
  EXPECT_EQ(log.Text(), "");
}

TEST(Open, TellsWhyAndLeavesSettings) {
  const TempDir dir;
  dir.WriteFile("a.b.conf", "$import \"base\"\nx = 1");
  dir.WriteFile("base.conf", "y = 2");
  dir.WriteFile("plain", "z = 3");
  dir.WriteFile("bad.cfg", "x = = 1");
  const TempDir elsewhere;
  TraceLog log;
  const auto config = confgrove::Open(std::filesystem::path(dir.Path("a.b.conf")));
  ASSERT_TRUE(config);
  EXPECT_EQ(confgrove::Reader(*config).Get("y", 0), 2);
  EXPECT_EQ(confgrove::OwnFile(config.get()), dir.Path("a.b.conf"));
  const auto plain = confgrove::Open(dir.Path("plain"));
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->GetSectionCount(""), 1);
  for (const char* name : {" front.cfg", "back.cfg ", " both", ".hidden", "a.cfg.cfg"}) {
    dir.WriteFile(name, "v = 1");
    EXPECT_TRUE(confgrove::Open(dir.Path(name))) << name;
  }
  // The library takes blanks off the end of a name: "plain " is another file.
  dir.WriteFile("plain ", "z = 3");
  for (const char* name : {"bad.cfg", "none.cfg", "plain ", ""}) {
    const auto none = confgrove::Open(dir.Path(name));
    EXPECT_FALSE(none || none.problems.empty()) << name;
  }
  EXPECT_EQ(ConfGetRoot(), elsewhere.Path());
  EXPECT_EQ(Open("made", ConfCreateNew)->GetFileName(), elsewhere.Path("made.cfg"));
  EXPECT_EQ(log.Text(), "");
}
