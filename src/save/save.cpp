// Save: a root goes back to its file.
#include "front/settings.h"
#include "front/trace.h"
#include "platform/platform.h"
#include "save/section_writer.h"
#include "tree/root_section.h"

namespace confgrove {

bool RootSection::Save() {
  if (read_only) {
    if (TraceLevel > 0) {
      TraceHandler(LevelError, "section: '%s' is 'read-only'. cannot be saved.", name.c_str());
    }
    return false;
  }
  Platform::OutputFile file(ComposeFullPath(ComposeFileName(name.str())));
  if (!file.is_open()) {
    TraceHandler(LevelError, "cannot open file for save:%s ", name.c_str());
    return false;
  }
  std::string text;
  WriteComment(comment().c_str(), 0, &text);
  if (!imports.empty()) {
    text += '\n';
    for (const auto& entry : imports) {
      text.append("$import \"").append(entry.first).append("\"\n");
    }
    text += '\n';
  }
  WriteSiblings(*this, 0, &text);
  file.Write(text);
  return true;
}

}  // namespace confgrove
