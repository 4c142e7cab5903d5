// Symbols: cleaning and testing text; and the letters of a name in a file, which are the same.
#include <gtest/gtest.h>

#include "support.h"

using namespace std::string_literals;

TEST(Symbols, ClearBlanksAndControlCharacters) {
  for (auto [text, cleared] : {std::pair("  a b  "s, "a b"s),
                               {"\ta ", "\ta"},
                               {" a\n ", "a\n"},
                               {"", ""},
                               {"   ", "   "},
                               {"a", "a"}}) {
    EXPECT_EQ(&Symbols::clear_blanks(text), &text);
    EXPECT_EQ(text, cleared);
  }
  std::string text = "\0a\x01\x1F \n\tb\x7F\x80\x9F\xFF\r"s;
  EXPECT_EQ(&Symbols::clear_ctrl(text), &text);
  EXPECT_EQ(text, "a b\x80\x9F\xFF");
}

// Every byte at the start of a path and of a name, and behind a letter.
TEST(Symbols, LettersOfPathsAndNames) {
  std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_\xA8\xB8";
  for (int byte = 0xC0; byte <= 0xFF; byte++) {
    if (byte != 0xC9 && byte != 0xE9) letters += static_cast<char>(byte);
  }
  for (int byte = 0; byte < 256; byte++) {
    SCOPED_TRACE(byte);
    const char c = static_cast<char>(byte);
    const bool letter = letters.find(c) != std::string::npos, digit = c >= '0' && c <= '9';
    const std::string fault = digit      ? "1 section cannot begin with number\n"
                              : c == '.' ? "1 path cannot begin with '.'\n"
                                         : "1 unknown symbol in the path\n";
    std::string first(1, c), later = "a"s + c;
    TraceLog log(0);
    EXPECT_EQ(Symbols::check_path(first), letter);
    EXPECT_EQ(Symbols::check_path(later), letter || digit || c == '.');
    EXPECT_EQ(log.Text(), letter ? "" : digit || c == '.' ? fault : fault + fault);
    EXPECT_EQ(later, "a"s + c);
    if (byte == 0) continue;  // a letter of names, which can't be seen in them
    EXPECT_EQ(DumpTree(ParseText("t", first + "=1").get()) == first + "=1", letter);
    EXPECT_EQ(DumpTree(ParseText("t", later + "=1").get()) == later + "=1", letter || digit);
  }
  TraceLog log(0);
  for (std::string path : {"", "a.1b", "a..b", "a.", "a!!"}) Symbols::check_path(path);
  EXPECT_EQ(log.Text(), "1 unknown symbol in the path\n");  // once, however many faults
}
