// Texts of the tool: names, numbers and encodings.
#ifndef CONFGROVE_TOOLS_TEXT_H
#define CONFGROVE_TOOLS_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace confgrove::Tool {

// One name, and names joined by dots: ASCII letters, '_' and the CP1251 Cyrillic letters; digits
// later.
bool IsName(std::string_view text);
bool IsPath(std::string_view text);

// The shortest text that reads back as the same number, plain where that is no burden: 100000.
std::string NumberText(double number);

// The number that `text` is as a whole, by the rules of the files. Null if it is none; an infinity
// if it is too large.
std::optional<double> ParseNumber(std::string_view text);

// Names are CP1251. Other texts are bytes: as they are if that is UTF-8, and taken for CP1251 if
// not. What comes out is UTF-8.
std::string NameToUtf8(std::string_view name);
std::string TextToUtf8(std::string_view text);

// Whether all of a text is UTF-8. One that isn't is CP1251.
bool IsUtf8(std::string_view text);

// Takes one character off the front of a text that isn't empty. For a byte that is none it is the
// mark that stands for such.
char32_t TakeCharacter(std::string_view* text, bool is_utf8);

void AppendUtf8(char32_t character, std::string* out);

// A path or name as the shell gives it: UTF-8 becomes CP1251, which may refuse it, and all else
// stays. Blanks around it go.
std::string PathFromShell(const std::string& argument);

}  // namespace confgrove::Tool

#endif
