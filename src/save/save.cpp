// Save: a root goes back to its file.
#include "front/settings.h"
#include "front/trace.h"
#include "platform/platform.h"
#include "save/section_writer.h"
#include "save/text_buffer.h"
#include "tree/root_section.h"

namespace confgrove {

bool RootSection::Save() {
  if (read_only) {
    if (TraceLevel > 0) {
      TraceHandler(LevelError, "section: '%s' is 'read-only'. cannot be saved.", name.c_str());
    }
    return false;
  }
  TextBuffer text;
  Platform::OutputFile file(ComposeFullPath(ComposeFileName(name.str())));
  if (!file.is_open()) {
    TraceHandler(LevelError, "cannot open file for save:%s ", name.c_str());
    return false;
  }
  text.SendTo(&file);
  WriteComment(comment().c_str(), 0, &text);
  if (!imports.empty()) {
    text.Append('\n');
    for (const auto& entry : imports) {
      text.Append("$import \"");
      text.Append(entry.first);
      text.Append("\"\n");
    }
    text.Append('\n');
  }
  WriteSiblings(*this, 0, &text);
  text.Flush();
  return true;
}

}  // namespace confgrove
