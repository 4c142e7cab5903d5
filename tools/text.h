// Texts of the tool: names, numbers and encodings.
#ifndef CONFGROVE_TOOLS_TEXT_H
#define CONFGROVE_TOOLS_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace confgrove::Tool {

// The bytes of names: ASCII letters, '_' and the CP1251 Cyrillic letters; digits later.
bool IsFirstLetter(char c);
bool IsLaterLetter(char c);

// One name, and names joined by dots.
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

// A path or name as the shell gives it: UTF-8 becomes CP1251, which may refuse it, and all else
// stays. Blanks around it go.
std::string PathFromShell(const std::string& argument);

// Without what could act on a terminal.
std::string Printable(std::string_view text);

}  // namespace confgrove::Tool

#endif
