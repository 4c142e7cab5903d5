// The commands of the tool, one function each. They give the exit code, or end in a Refusal.
#ifndef CONFGROVE_TOOLS_COMMANDS_H
#define CONFGROVE_TOOLS_COMMANDS_H

#include <optional>
#include <string>
#include <vector>

namespace confgrove::Tool {

enum class Question { Value, Type, Comment, InlineComment };

enum class ValueKind { Inferred, String, Link };

struct SetRequest {
  std::string file, path;
  std::vector<std::string> values;
  ValueKind kind = ValueKind::Inferred;
  std::optional<std::string> comment, inline_comment;
  bool allow_comment_loss = false;
};

struct FormatRequest {
  std::vector<std::string> files;
  bool check = false;
  bool diff = false;
  bool allow_comment_loss = false;
};

// Commands that read.
int Check(const std::vector<std::string>& files);
int Get(const std::string& file, const std::string& path, Question question);
int List(const std::string& file, const std::string& path, bool as_json);
int Imports(const std::string& file);

// Commands that write.
int Set(const SetRequest& request);
int Format(const FormatRequest& request);
int Unset(const std::string& file, const std::string& path, bool allow_comment_loss);
int Rename(const std::string& file, const std::string& path, const std::string& name,
           bool allow_comment_loss);

}  // namespace confgrove::Tool

#endif
