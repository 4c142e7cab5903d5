// Files of libconfig.
#include <libconfig.h++>

#include "convert/foreign.h"

namespace confgrove::Tool {
namespace {

using Theirs = libconfig::Setting;

void Take(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks);

void TakeChildren(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  ours->has_block = true;
  for (int i = 0; i < theirs.getLength(); ++i) {
    const Theirs& child = theirs[i];
    Take(Below(path, child.getName()), child, ours->Add(child.getName()), remarks);
  }
}

void TakeElements(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  std::vector<Setting> elements(static_cast<std::size_t>(theirs.getLength()));
  for (int i = 0; i < theirs.getLength(); ++i) {
    Take(Below(path, "[" + std::to_string(i) + "]"), theirs[i],
         &elements[static_cast<std::size_t>(i)], remarks);
  }
  TakeArray(path, elements, ours, remarks);
}

void Take(const std::string& path, const Theirs& theirs, Setting* ours, Remarks* remarks) {
  switch (theirs.getType()) {
    case Theirs::TypeInt: TakeWhole(path, static_cast<int>(theirs), ours, remarks); break;
    case Theirs::TypeInt64: TakeWhole(path, static_cast<long long>(theirs), ours, remarks); break;
    case Theirs::TypeFloat: TakeNumber(path, static_cast<double>(theirs), ours, remarks); break;
    case Theirs::TypeBoolean:
      TakeNumber(path, static_cast<bool>(theirs) ? 1 : 0, ours, remarks);
      break;
    case Theirs::TypeString:
      TakeText(path, static_cast<const char*>(theirs), true, ours, remarks);
      break;
    case Theirs::TypeGroup: TakeChildren(path, theirs, ours, remarks); break;
    case Theirs::TypeArray:
    case Theirs::TypeList: TakeElements(path, theirs, ours, remarks); break;
    case Theirs::TypeNone: remarks->Refuse(path, "there is no empty value"); break;
  }
}

}  // namespace

void ReadLibconfig(const std::string& file, Setting* root, Remarks* remarks) {
  libconfig::Config config;
  const std::size_t slash = file.rfind('/');
  const std::string directory = slash == std::string::npos ? "." : file.substr(0, slash + 1);
  config.setIncludeDir(directory.c_str());
  try {
    config.readFile(file.c_str());
  } catch (const libconfig::ParseException& fault) {
    const std::string where = fault.getFile() != nullptr ? fault.getFile() : file;
    remarks->Refuse(where + ":" + std::to_string(fault.getLine()), fault.getError());
    return;
  } catch (const libconfig::FileIOException&) {
    remarks->Refuse(file, "cannot be read");
    return;
  }
  TakeChildren("", config.getRoot(), root, remarks);
}

}  // namespace confgrove::Tool
