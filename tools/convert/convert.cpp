// `confgrove convert`: which reader a format has, what can be carried over, and how it is written.
#include "convert/convert.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <set>

#include "convert/foreign.h"

namespace confgrove::Tool {
namespace {

struct Format {
  const char* name;
  const char* library;
  void (*read)(const std::string& file, Setting* root, Remarks* remarks);  // null: built without it
};

const Format Formats[] = {
#ifdef CONFGROVE_WITH_LIBCONFIG
    {"libconfig", "libconfig++", ReadLibconfig},
#else
    {"libconfig", "libconfig++", nullptr},
#endif
#ifdef CONFGROVE_WITH_PROPERTY_TREE
    {"info", "Boost.PropertyTree", ReadInfo},
    {"ini", "Boost.PropertyTree", ReadIni},
#else
    {"info", "Boost.PropertyTree", nullptr},
    {"ini", "Boost.PropertyTree", nullptr},
#endif
#ifdef CONFGROVE_WITH_TOML
    {"toml", "toml++", ReadToml},
#else
    {"toml", "toml++", nullptr},
#endif
#ifdef CONFGROVE_WITH_JSON
    {"json", "nlohmann::json", ReadJson},
#else
    {"json", "nlohmann::json", nullptr},
#endif
};

// --- What can be carried over -------------------------------------------------------------------

// A letter of Russian outside of ASCII, two bytes of UTF-8, as the byte that names have for it; 0
// if it is none.
char CyrillicLetter(unsigned char first, unsigned char second) {
  const int code = (first & 0x1F) << 6 | (second & 0x3F);
  if ((first & 0xE0) != 0xC0 || (second & 0xC0) != 0x80) return 0;
  if (code == 0x401) return '\xA8';
  if (code == 0x451) return '\xB8';
  const bool has_place = code >= 0x410 && code <= 0x44F && code != 0x419 && code != 0x439;
  return has_place ? static_cast<char>(code - 0x410 + 0xC0) : '\0';
}

// The name as our files hold it; "" if they can't.
std::string OurName(const std::string& name) {
  std::string ours;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char c = name[i];
    const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    const bool digit = c >= '0' && c <= '9' && i > 0;
    if (letter || digit) {
      ours += c;
      continue;
    }
    if (i + 1 == name.size()) return "";
    const char cyrillic =
        CyrillicLetter(static_cast<unsigned char>(c), static_cast<unsigned char>(name[i + 1]));
    if (cyrillic == '\0') return "";
    ours += cyrillic;
    ++i;
  }
  return ours;
}

// The name with '_' for each character that our files can't hold in one.
std::string Replaced(const std::string& name) {
  std::string ours;
  for (std::size_t i = 0; i < name.size();) {
    std::size_t end = i + 1;
    while (end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) ++end;
    const std::string character = name.substr(i, end - i);
    ours += OurName('_' + character).empty() ? "_" : character;
    i = end;
  }
  const bool lacks_letter = ours.empty() || (ours.front() >= '0' && ours.front() <= '9');
  return lacks_letter ? '_' + ours : ours;
}

void CheckBlock(const std::string& path, int level, bool rename, Setting* block, Remarks* remarks) {
  if (level > MostLevels) return remarks->Refuse(path, "nesting too deep");
  std::set<std::string> names;
  for (Setting& child : block->children) {
    const std::string place = Below(path, child.name);
    std::string name = OurName(child.name);
    if (name.empty() && rename) {
      const std::string replaced = Replaced(child.name);
      name = OurName(replaced);
      remarks->Note(place, "is called " + replaced + " now");
    }
    child.name = name;
    if (name.empty()) {
      remarks->Refuse(place, "a name is letters, digits and _, a letter or _ first");
    } else if (!names.insert(name).second) {
      remarks->Refuse(place, "stands twice in one block");
    }
    if (child.value == Setting::Value::Text &&
        child.text.find_first_of(std::string("\"\n\r\0", 4)) != std::string::npos) {
      remarks->Refuse(place, "a text can't hold a double quote, a line end or a NUL");
    }
    CheckBlock(place, level + 1, rename, &child, remarks);
  }
}

// --- How it is written --------------------------------------------------------------------------

void WriteNumbers(const Setting& setting, std::string* out) {
  if (setting.is_array) *out += '[';
  for (std::size_t i = 0; i < setting.numbers.size(); ++i) {
    char buffer[32];
    if (i > 0) *out += ',';
    out->append(buffer, std::to_chars(buffer, buffer + sizeof buffer, setting.numbers[i]).ptr);
  }
  if (setting.is_array) *out += ']';
}

void WriteBlock(const Setting& block, const std::string& indent, std::string* out) {
  for (const Setting& child : block.children) {
    *out += indent + child.name;
    if (child.value == Setting::Value::Text) *out += " = \"" + child.text + '"';
    if (child.value == Setting::Value::Numbers) {
      *out += " = ";
      WriteNumbers(child, out);
    }
    *out += '\n';
    if (!child.has_block) continue;
    *out += indent + "{\n";
    WriteBlock(child, indent + '\t', out);
    *out += indent + "}\n";
  }
}

}  // namespace

std::vector<std::string> ConvertFormats() {
  std::vector<std::string> names;
  for (const Format& format : Formats) names.emplace_back(format.name);
  return names;
}

int Convert(const ConvertRequest& request) {
  const Format* format = std::find_if(std::begin(Formats), std::end(Formats),
                                      [&](const Format& f) { return f.name == request.from; });
  Setting root;
  Remarks remarks;
  if (format == std::end(Formats)) {
    remarks.Refuse(request.from, "no format that can be converted");
  } else if (format->read == nullptr) {
    remarks.Refuse(request.from, std::string("confgrove was built without ") + format->library);
  } else {
    format->read(request.file, &root, &remarks);
    CheckBlock("", 1, request.rename, &root, &remarks);
  }
  for (const std::string& line : remarks.lines()) std::cerr << "confgrove: " << line << '\n';
  if (remarks.refused()) return 1;
  std::string text;
  WriteBlock(root, "", &text);
  std::cout << text;
  return 0;
}

}  // namespace confgrove::Tool
