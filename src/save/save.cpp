// Save: a root goes back to its file.
#include "base/settings.h"
#include "base/trace.h"
#include "platform/platform.h"
#include "save/section_writer.h"
#include "save/text_buffer.h"
#include "tree/root_section.h"

namespace confgrove {
namespace {

void WriteFile(const RootSection& root, TextBuffer* out, SaveWarnings* warnings) {
  WriteComment(root.comment().c_str(), 0, out);
  if (!root.imports.empty()) {
    out->Append('\n');
    for (const auto& entry : root.imports) {
      out->Append("$import \"");
      out->Append(entry.first);
      out->Append("\"\n");
    }
    out->Append('\n');
  }
  WriteSiblings(root, 0, out, warnings);
  out->Flush();
}

}  // namespace

bool RootSection::Save() {
  if (RefusesChange("section: '%s' is 'read-only'. cannot be saved.", "")) return false;
  SaveWarnings warnings;
  const std::string path = ComposeFullPath(ComposeFileName(std::string(name())));
  {
    TextBuffer out;
    Platform::OutputFile file(path);
    if (!file.is_open()) {
      TraceHandler(LevelError, "cannot open file for save:%s ", name().data());
      return false;
    }
    out.SendTo(&file);
    WriteFile(*this, &out, &warnings);
  }
  if (path == origin.path) stamp = Platform::GetStamp(path);
  warnings.Send();  // nothing here looks at the tree any more, nor at the file
  return true;
}

}  // namespace confgrove
