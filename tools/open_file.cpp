// Opening: the library reads the file, and the outline adds what it doesn't tell.
#include "open_file.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "messages.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

constexpr const char* ChangedMeanwhile = "the file has been changed while it was read";

}  // namespace

std::unique_ptr<Config> LoadConfig(const FileName& file, bool with_warnings) {
  RequireReadable(file.PathOf(file.name), file.shown);
  file.Use();
  ForgetMessages();
  std::unique_ptr<Config> config(ConfCreate(file.name.c_str(), ConfCreateOpen));
  ShowMessages(file, with_warnings);
  if (config == nullptr) throw Refusal("");
  return config;
}

void FillNode(Section* section, Node* node) {
  if (section->GetSectionCount("") != static_cast<std::int32_t>(node->children.size())) {
    throw Refusal(ChangedMeanwhile);
  }
  node->comment = section->GetComment("");
  node->inline_comment = section->GetComment("", true);
  if (node->type != SectionType::Link) node->type = section->GetType("");
  if (node->type == SectionType::String) node->text = section->GetString("");
  if (node->type == SectionType::Number) {
    const std::int32_t count = section->GetDoubles(nullptr, 0, "");
    node->numbers.resize(static_cast<std::size_t>(count));
    section->GetDoubles(node->numbers.data(), count, "");
  }
  std::int32_t index = 0;
  for (Node& child : node->children) {
    Section* const child_section = section->GetSection("", index++);
    // The library gives no more of a name than comes before a NUL byte.
    if (std::strcmp(child_section->GetName(""), child.name.c_str()) != 0) {
      throw Refusal(ChangedMeanwhile);
    }
    FillNode(child_section, &child);
  }
}

OpenFile::OpenFile(FileName file_name)
    : name(std::move(file_name)),
      text(ReadText(name.PathOf(name.name), name.shown)),
      outline(ReadOutline(text)),
      config(LoadConfig(name)) {
  FillNode(config.get(), &outline.top);
}

}  // namespace confgrove::Tool
