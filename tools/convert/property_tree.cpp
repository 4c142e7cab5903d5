// INFO and INI files, as Boost.PropertyTree reads them: every value is a text.
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ini_parser.hpp>

#include "convert/foreign.h"

namespace confgrove::Tool {
namespace {

using boost::property_tree::ptree;

void TakeChildren(const std::string& path, const ptree& theirs, Setting* ours, Remarks* remarks) {
  for (const auto& [name, child] : theirs) {
    const std::string place = Below(path, name);
    Setting* const setting = ours->Add(name);
    if (!child.data().empty() || child.empty()) {
      TakeText(place, child.data(), false, setting, remarks);
    }
    TakeChildren(place, child, setting, remarks);
  }
}

// Quotes around a value are part of it to the reader of INI files; to people they mark a text.
void TakeIniValue(const std::string& path, const std::string& text, Setting* ours,
                  Remarks* remarks) {
  const bool quoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
  TakeText(path, quoted ? text.substr(1, text.size() - 2) : text, quoted, ours, remarks);
}

// A section of an INI file, or the top of one. In the top, what has children is a section.
void TakeIniSection(const std::string& path, const ptree& theirs, Setting* ours, Remarks* remarks) {
  ours->has_block = true;
  for (const auto& [name, child] : theirs) {
    const std::string place = Below(path, name);
    Setting* const setting = ours->Add(name);
    if (child.empty()) {
      TakeIniValue(place, child.data(), setting, remarks);
    } else {
      TakeIniSection(place, child, setting, remarks);
    }
  }
}

template <typename Reader>
bool Read(const Reader& reader, const std::string& file, ptree* tree, Remarks* remarks) {
  try {
    reader(file, *tree);
    return true;
  } catch (const boost::property_tree::file_parser_error& fault) {
    const bool has_line = fault.line() != 0;
    remarks->Refuse(has_line ? file + ":" + std::to_string(fault.line()) : file, fault.message());
    return false;
  }
}

}  // namespace

void ReadInfo(const std::string& file, Setting* root, Remarks* remarks) {
  ptree tree;
  const auto reader = [](const std::string& name, ptree& into) {
    boost::property_tree::read_info(name, into);
  };
  if (Read(reader, file, &tree, remarks)) TakeChildren("", tree, root, remarks);
}

void ReadIni(const std::string& file, Setting* root, Remarks* remarks) {
  ptree tree;
  const auto reader = [](const std::string& name, ptree& into) {
    boost::property_tree::read_ini(name, into);
  };
  if (Read(reader, file, &tree, remarks)) TakeIniSection("", tree, root, remarks);
}

}  // namespace confgrove::Tool
