// The format as it is read: trees, and every error and warning with its place.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <sstream>
#include <vector>

#include "support.h"

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

// All messages of a load of `t`. "t2! x" stands for the error x at line 2 of t.cfg, "in3? x" for a
// warning in in.cfg; other rows go as they are.
std::string Messages(const std::string& rows) {
  std::string all = "2 Translating config file: t\n", row;
  int counts[] = {0, 0};
  for (std::istringstream lines(rows); std::getline(lines, row); all += row + "\n") {
    const std::size_t digit = row.find_first_of("0123456789"), mark = row.find_first_of("!?");
    if (mark == std::string::npos) continue;
    const bool warning = row[mark] == '?';
    counts[warning]++;
    row = (warning ? "2 " : "1 ") + row.substr(0, digit) + ".cfg(" +
          row.substr(digit, mark - digit) + (warning ? "), warning:" : "), error:") +
          row.substr(mark + 1);
  }
  return all + "3 " + std::to_string(counts[0]) + " error(s), " + std::to_string(counts[1]) +
         " warning(s)\n";
}

struct LoadCase {
  std::string_view text;
  std::string messages, tree = "null";
  const char* imported = "";  // what in.cfg holds
};

void ExpectLoads(std::initializer_list<LoadCase> cases) {
  for (const LoadCase& c : cases) {
    SCOPED_TRACE(c.text);
    const TempDir dir;
    dir.WriteFile("in.cfg", c.imported);
    TraceLog log;
    const ConfigPtr config = ParseText("t", std::string(c.text));
    EXPECT_EQ(log.Text(), Messages(c.messages));
    EXPECT_EQ(DumpTree(config.get()), c.tree);
  }
}

std::string Repeat(int count, const std::string& text) {
  std::string all;
  while (count-- > 0) all += text;
  return all;
}

}  // namespace

TEST(Parser, SoundTexts) {
  ExpectLoads({
      {"", "", ""},
      {"a = 1 b\n=\n\"x\" c { d = 2 }e=3{ f = 4 } { A = 5 } A = 6 B ", "",
       "a=1 b=\"x\" c{d=2} e=3{f=4 A=5} A=6 B"},
      {"a = 0x10=5 b\t=\f\"\\\" c = \"\" d = \"#{}/*\t\x80\" e = [,1] f = [\n2\n3.5]", "",
       "a=0 x10=5 b=\"\\\" c=\"\" d=\"#{}/*\t\x80\" e=1 f=[2,3.5]"},
      {"b = 1 x { c = 2 } a=@b d = @x.c e=@e f = @b{ g = 3 }", "", "b=1 x{c=2} a=1 d=2 e f=1{g=3}"},
      {"/**/a = 1/***/b = 2/* x **/c = 3/* y *//* # \" { */d = 4 /", "", "a=1 b=2 c=3 d=4"},
      {"// a = 1\n/x b = 2 /\n# c\nd ", "", "a=1 b=2 ( c|)d"},  // a slash takes a byte with it
      {"a = 1 /*\n*/ # b\nc = 2 /*\n*/\n# d\ne ", "", "a=1#( b) c=2 ( d|)e"},
      {"a # b\nc\n#d\n#\ne { f = 1 # g\nh = 2 } # i\n{ j = 3 } # k\nx { # l\ny = 1 }", "",
       "a#( b) c (d||)e{f=1#( g) h=2 j=3}#( k) x{( l|)y=1}"},
      {"a = 1 # b\r\n# c\rd = 2\r\n#\r\ne ", "", "a=1#( b) ( c|)d=2 (|)e"},
      {"a = 1\n\t\t\t\t\t\t\t\t\t\tb = 2\n\t\t\t\t\t\t\t\tc = 3\n\t\t", "", "a=1 b=2 c=3"},
      {"a = 1 \0# c\nb\0=\0002 b = 3"sv, "", "a=1 ( c|)b=2 b=3"},  // NUL ends lines; it is a letter
      {"a = 1 b # c", "", "a=1 b"},  // the end of the file takes a comment and a name with it
      {"a = 1 b", "", "a=1"},
      {"a = [1 2,,3,]\nb = []\nc = [,]",
       "t1? unnecessary comma before ']'\nt2? empty array declaration, setting zero value\n"
       "t3? unnecessary comma before ']'\nt3? empty array declaration, setting zero value",
       "a=[1,2,3] b=0 c=0"},
      {"x\n# c\n{ y = 1 }", "t3? comment will be assigned to next section", "x{( c|)y=1}"},
      {"x { y = 1\n# c\n}z {\n# d\n} # e\nv {\n\n}",
       "t3? comment skipped\nt5? comment skipped\nt8? blank section", "x{y=1} z ( e|)v"},
  });
}

TEST(Parser, FaultyTexts) {
  const char* const expected = "t1! expected number or \"string\" (may be array) after '='";
  for (const char* text : {"a =", "a = @a", "a = @", "a = \"x", "a = {", "a = $", "a = # b"}) {
    ExpectLoads({{text, expected}});
  }
  ExpectLoads({
      // Most errors leave the rest to be read.
      {"= 1", "t1! unexpected '='\nt1! syntax error"},
      {"a\nb = 1", "t2! expected '=' or '{'"},
      {"a = 1 a = 2", "t1! section redefinition"},
      {"a=1 b=1 c=1 d=1 e=1 f=1 g=1 h=1 i=1 j=1 k=1 l=1 m=1 n=1 e=1", "t1! section redefinition"},
      {"a = 1 2", "t1! syntax error"},
      {"a = 1 @a ", "t1! syntax error"},
      {"a = 1,", "t1! syntax error"},
      {"a = 1]", "t1! syntax error"},
      {"a = # b\n", "t2! expected number or \"string\" (may be array) after '='"},  // a line late
      {"a = @b ", "7 section 't': cannot find subsection: b\nt1! link to undefined section"},
      {"a = @1 ", "t1! illegal char in link definition"},  // and then it leads to a itself
      {"a = \"x\nb = 1", "t1! \" outline"},
      {"a = [1 \"s\"]", "t1! syntax error in array declaration"},
      {"a = 1 b = [1 @a ]", "t1! syntax error in array declaration"},
      {"a = [1 # b\n]", "t2! syntax error in array declaration"},
      {"a = [1,] =", "t1? unnecessary comma before ']'\nt1! unexpected '='"},
      {"a = 1 = 2", "t1! unexpected '='\nt1! syntax error"},
      {"$ /**/ import 1", "t1! expected \"filename\" after $import directive"},
      {"a { = 1 }", "t1! unexpected '='\nt1! syntax error"},
      {"a { b = 1 } { b = 2 }", "t1! section redefinition\nt1! syntax error"},
      {"a = @a\0 "sv, "1 unknown symbol in the path\nt1! link to undefined section"},
      {"a = @\0 "sv, "1 unknown symbol in the path\nt1! link to undefined section"},
      {"a = \"x\0b = \"\r="sv, "t1! \" outline\nt2! \" outline\nt3! unexpected '='"},
      {"\r\n/*\r\r\n*/\0=\f\v"sv, "t4! unexpected '='\nt4! illegal char\nt4! unexpected '}'"},
      {"a = 1 !\n=", "t1! illegal char\nt1! unexpected '}'"},
      {"x {!\n=", "t1! illegal char\nt1? blank section\nt2! unexpected '='"},
      {"x { a!\n}", "t1! illegal char\nt1! unexpected '}'\nt2! unexpected '}'"},
      {"x { a\n} =", "t2! unexpected '}'\nt2! unexpected '='"},
      {"{ a = 1\n#\n}\n=", "t3! unexpected '}'\nt3? comment skipped"},
      {"x {\ny {\n", "t3! unexpected end of file\nt3! unexpected end of file"},
      {"x { a = [1\n", "t2! unexpected end of file\nt2! unexpected end of file"},
      {"a = [!\n1",
       "t1! illegal char\nt1! syntax error in array declaration\n"
       "t2! unexpected end of file"},
      {"$\n1 =", "t2! syntax error after $"},
      {"$imports =", "t1! undefined directive after $"},
      {"x { $foo 1 }\n=", "t1! undefined directive after $\nt1! syntax error\nt1! unexpected '}'"},
  });
}

TEST(Parser, Numbers) {
  std::istringstream cases(
      "5=5 5.=5 .5=0.5 +5=5 -5=-5 -.5=-0.5 +.5=0.5 007=7 1d3=1000 1D+3=1000 1e3=1000 1.5E-3=0.0015 "
      "0.1=0.1 9.243589052319255=9.243589052319255 4.9e-324=4.9e-324 1e400=inf -1d400=-inf "
      "9007199254740993=9007199254740992 1e=1 "
      "1d+=1 12.e-=12 .=0 -=0 0.0=0 000=0 -0=-0 0.00=0 -0.0=-0 0000=0 .e55=0 1e-400=0");
  for (std::string item; cases >> item;) {
    SCOPED_TRACE(item);
    const std::size_t split = item.find('=');
    const double expected = std::strtod(&item[split + 1], nullptr);
    double value = 99;
    TraceLog log;
    EXPECT_TRUE(ParseText("t", "a = " + item.substr(0, split))->GetDouble(&value, "a"));
    EXPECT_EQ(value, expected);
    EXPECT_EQ(std::signbit(value), std::signbit(expected));
    const char* const zero = "t1? cannot parse number, set to zero";  // of four bytes or more
    EXPECT_EQ(log.Text(), Messages(split > 3 && expected == 0 ? zero : ""));
  }
}

TEST(Parser, NumbersOfAnyLength) {
  std::string text;
  std::vector<std::string> numbers;
  for (int whole = 1; whole <= 17; ++whole) {
    for (int decimals = -1; decimals <= 17; ++decimals) {
      const std::string digits = "97086421357908642135";
      std::string number = digits.substr(static_cast<std::size_t>(decimals + 1) % 3,
                                         static_cast<std::size_t>(whole));
      if (decimals >= 0) number += "." + digits.substr(0, static_cast<std::size_t>(decimals));
      numbers.insert(numbers.end(), {number, "-" + number});
      text += number + ",-" + number + " ";
    }
  }
  const ConfigPtr config = ParseText("t", "a = [" + text + "]");
  std::vector<double> values(numbers.size() + 1);
  ASSERT_EQ(config->GetDoubles(values.data(), static_cast<int>(values.size()), "a"),
            static_cast<int>(numbers.size()));
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    EXPECT_EQ(values[i], std::strtod(numbers[i].c_str(), nullptr)) << numbers[i];
  }
}

TEST(Parser, FaultyNumbers) {
  for (const std::string row :
       {"double point, syntax|1.2. 1.e. .1.", "invlaid '.'|1e. 1e5. +1d.",
        "double '-' before number|-- -e-", "'+-' syntax|+- .- +e- -.-", "'++' syntax|++ .+ -.+",
        "'-+' syntax|-+ -e+", "'-' or '+' before 'E', 'e', 'd' or 'D'|1- 1.+",
        "illegal '-' or '+' in exp|1e5- 1e-5+", "'--' before exp|1e-- 1.d--",
        "'+-' before exp|1e+-", "'-+' before exp|1e-+", "'++' before exp|1e++",
        "double 'E', 'e', 'd' or 'D'|1ee 1d5D", "exp digits was forgotten|1e -e 12data 1e+",
        "base digits was forgotten|. + -. -e5"}) {
    std::istringstream numbers(row.substr(row.find('|') + 1));
    for (std::string number; numbers >> number;) {
      ExpectLoads({{"a = " + number + "\n", "t1! " + row.substr(0, row.find('|'))}});
    }
  }
  // What follows the error is another number.
  ExpectLoads({{"a = 1.2.3", "t1! double point, syntax\nt1! syntax error"},
               {"a = 0.00.", "t1! double point, syntax\nt1? cannot parse number, set to zero"}});
}

TEST(Parser, Imports) {
  ExpectLoads({
      {"# h\n$ import \"in\"\n# c\na = 1", "", "( h|)( c|)a=1"},
      {"# h\n$import\"in\"$import\"in.cfg\"", "", ""},  // the last head comment counts
      {"$import \"in\" # c\nb = 1", "", "( c|)b=1"},
      {"a\n=1 $import \"in\" # c\n", "", "a=1#( c)"},
      {"x {\n$import \"in\" y = @i }",
       "t2? $import must be as possible in root section\n7 section 't': cannot find subsection: i",
       "x{y=5}", "i = 5"},
      {"\n$import \"in\" x {\n}", "in2? blank section\nt3? blank section", "x", "y {\n}"},
      {"$import \"in\"\n=", "in3! unexpected '='\nt1! cannot parse import file\nt2! unexpected '='",
       "null", "\n\n="},
      {"=\n$import \"in\"", "t1! unexpected '='\nt2! cannot parse import file"},
      {"$import \"t\"\n=", "t1! recursive $import"},
      {"\n$import \"t.cfg\"", "t.cfg2! recursive $import\nt2! cannot parse import file"},
      {"$import \"in\"\n$import \"in\"\n=", "t2! recursive $import"},
      {"$import \"in\"", "in2! recursive $import\nt1! cannot parse import file", "null",
       "\n$import \"t\""},
      {"# c\n$import \"no\"\n{ $import \"no\"",
       "1 cannot open import file:no.cfg\nt2! cannot parse import file\n"
       "t3? comment will be assigned to next section\nt3! recursive $import"},
  });
}

TEST(Parser, NestingEndsAt1000Levels) {
  const std::string open = Repeat(999, "a{"), close = Repeat(999, "}");
  ExpectLoads({{open + "a=1" + close + " b=1", "", open + "a=1" + close + " b=1"},
               {open + "a{}" + close, "t1? blank section", open + "a" + close},
               {Repeat(1000, "a{\n") + "b = 1 =\n=", "t1001! nesting too deep"}});
}

TEST(Parser, ImportChainsEndAt100Files) {
  const TempDir dir;
  for (int i = 1; i <= 100; i++) {
    const std::string next = "$import \"f" + std::to_string(i + 1) + "\"";
    dir.WriteFile("f" + std::to_string(i) + ".cfg", i == 99 ? "" : next);
  }
  EXPECT_NE(ParseText("f0", "$import \"f1\""), nullptr);  // f99 is the last of 100
  dir.WriteFile("f99.cfg", "$import \"f100\" =");
  TraceLog log(0);
  EXPECT_EQ(Open("f0"), nullptr);
  const std::string faults =
      "1 f99.cfg(1), error: imports nested too deep\n1 f99.cfg(1), error: unexpected '='\n1 "
      "f98.cfg";
  EXPECT_EQ(log.Text().find(faults), 0U);
  EXPECT_NE(log.Text().find("\n3 101 error(s), 0 warning(s)\n"), std::string::npos);
}

// The text may end anywhere: there is a tree or an error, the same each time.
TEST(Parser, TheEndMayComeAnywhere) {
  const std::string sample =
      "# h\r\n$import \"in\"\n/* b */a = -1.5e+3 # c\nx { y = [1, 2 .5]\0z = \"s\" { w = 1 } }\n"
      "l = @x.z # d\nv = 0000 \xC0\xB8{ }\n# e\n{ q = 1 }"s;
  const TempDir dir;
  dir.WriteFile("in.cfg", "i = 1");
  for (std::size_t size = 0; size <= sample.size(); size++) {
    TraceLog log;
    std::string runs[2];
    for (std::string& run : runs) {
      run = DumpTree(ParseText("t", sample.substr(0, size)).get());
      run += log.Take();
      EXPECT_EQ(run.find("null") == 0, run.find(" error: ") != std::string::npos) << run;
    }
    EXPECT_EQ(runs[0], runs[1]);
  }
}

// What is near the end or short is looked at byte by byte, and all else by sixteen.
TEST(Parser, NothingHangsOnHowMuchFollows) {
  std::mt19937 random(1);
  const std::string_view bytes = "aZ9_.+-eD0\xE0\xC9\xA8\0 \t\r\"\"==[],@#/{}$!"sv;
  for (int i = 0; i < 1500; ++i) {
    std::string text = i % 4 == 0 ? "" : "a=";
    const std::size_t size = i % 2 == 0 ? 14 : 50;
    while (text.size() < size) {  // often more of the same
      const std::size_t count = random() % 3 == 0 ? random() % 20 : 1;
      text.append(count, bytes[random() % bytes.size()]);
    }
    text.resize(size);
    text += '\n';
    std::string results[2];
    for (std::string& result : results) {
      TraceLog log;
      const ConfigPtr config = ParseText("t", text);
      result = DumpTree(config.get()) + log.Take();
      text.append(40, ' ');
    }
    EXPECT_EQ(results[0], results[1]) << text;
  }
}

// A large file is read piece by piece, which nobody notices: each of these texts is cut anywhere.
TEST(Parser, PiecesMayEndAnywhere) {
  constexpr int FirstRead = 65535, Lines = 65000;
  const struct {
    std::string text, result;
  } cases[] = {
      {"#c\r\n#d\r\na = 1 #i\r\nb\r\n{ n\0m = \"s\"\r\n /* x\r\n*\r\n/ * / y */ v = [1,\n2] }\r\n"s,
       "(c|d|)a=1#(i) b{n=\"s\" v=[1,2]}2 Translating config file: t\n3 0 error(s), 0 "
       "warning(s)\n"},
      {"n = 1\nl =\n@9\nm = \"\r\n/\r\n/* open\n",
       "null2 Translating config file: t\n1 t.cfg(65003), error: illegal char in link definition\n"
       "1 t.cfg(65004), error: \" outline\n3 2 error(s), 0 warning(s)\n"},
  };
  for (const auto& c : cases) {
    const int size = static_cast<int>(c.text.size());
    for (int in_first_piece = 0; in_first_piece <= size; ++in_first_piece) {
      const int blanks = FirstRead - Lines - in_first_piece;
      const std::string in_front = Repeat(Lines, "\n") + Repeat(blanks, " ");
      TraceLog log;
      const ConfigPtr config = ParseText("t", in_front + c.text + Repeat(FirstRead, "\n"));
      EXPECT_EQ(DumpTree(config.get()) + log.Take(), c.result) << in_first_piece;
    }
  }
}
