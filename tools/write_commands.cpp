// The commands that write: set, format, unset and rename.
#include <dtl/dtl.hpp>
#include <iostream>
#include <sstream>

#include "commands.h"
#include "messages.h"
#include "refusal.h"
#include "rewrite.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

void RefuseUnless(bool condition, const std::string& reason, ExitCode code = ExitRefused) {
  if (!condition) throw Refusal(reason, code);
}

// A path that a file can hold.
std::string PathToChange(const std::string& argument) {
  std::string path = PathFromShell(argument);
  RefuseUnless(IsPath(path), "'" + argument + "' is no path of sections");
  return path;
}

// What a path names in the file itself, for a change of what is there.
void RequireOwn(Rewrite* rewrite, const std::string& path) {
  if (FindNode(rewrite->wanted, path) != nullptr) return;
  const bool imported = rewrite->config().GetSectionCount(path.c_str()) >= 0;
  throw Refusal(rewrite->source().name.shown + ": '" + NameToUtf8(path) + "' " +
                (imported ? "stands in an imported file" : "isn't there"));
}

// What the values of a call mean, as the value of `node`.
void ReadValues(const SetRequest& request, Node* node) {
  const std::string& first = request.values.front();
  const bool single = request.values.size() == 1;
  const bool link = request.kind == ValueKind::Link ||
                    (request.kind == ValueKind::Inferred && single && first.substr(0, 1) == "@");
  node->text.clear();
  node->numbers.clear();
  if (link) {
    RefuseUnless(single, "a link has one target", ExitWrongCall);
    node->type = SectionType::Link;
    node->text = PathFromShell(first.substr(first.substr(0, 1) == "@" ? 1 : 0));
    RefuseUnless(IsPath(node->text), "'" + first + "' is no link; --string makes a text of it",
                 ExitWrongCall);
    return;
  }
  if (request.kind == ValueKind::Inferred) {
    for (const std::string& value : request.values) {
      const std::optional<double> number = ParseNumber(value);
      if (!number) break;
      node->numbers.push_back(*number);
    }
    if (node->numbers.size() == request.values.size()) {
      node->type = SectionType::Number;
      return;
    }
    node->numbers.clear();
  }
  RefuseUnless(single, "several values make an array, and must all be numbers", ExitWrongCall);
  RefuseUnless(first.find_first_of("\"\r\n") == std::string::npos,
               "a text can't hold a double quote or a line end");
  node->type = SectionType::String;
  node->text = first;
}

bool StoreValue(const Node& node, const char* path, Config* config) {
  switch (node.type) {
    case SectionType::String: return config->SetString(node.text.c_str(), path);
    case SectionType::Link: return config->SetLink(node.text.c_str(), path);
    case SectionType::Number:
      return config->SetDoubles(node.numbers.data(), static_cast<std::int32_t>(node.numbers.size()),
                                path);
    case SectionType::None: break;
  }
  return false;
}

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  if (!text.empty() && text.back() != '\n') lines.back() += "\n\\ No newline at end of file";
  return lines;
}

void PrintDiff(const std::string& file, const std::string& before, const std::string& after) {
  dtl::Diff<std::string> diff(SplitLines(before), SplitLines(after));
  diff.onHuge();
  diff.compose();
  diff.composeUnifiedHunks();
  std::cout << "--- " << file << "\n+++ " << file << " (canonical)\n";
  diff.printUnifiedFormat();
}

int FormatOne(const std::string& file, const FormatRequest& request) {
  const bool preview = request.check || request.diff;
  Rewrite rewrite(file, preview ? Rewrite::Purpose::Preview : Rewrite::Purpose::Replace);
  const std::string& text = rewrite.Render(request.allow_comment_loss);
  const std::string& before = rewrite.source().text;
  if (!preview) rewrite.Replace();
  if (text == before) return ExitDone;
  if (request.diff) PrintDiff(file, before, text);
  if (!request.check) return ExitDone;
  Complain(file + ": not in canonical form");
  return ExitRefused;
}

}  // namespace

int Set(const SetRequest& request) {
  const std::string path = PathToChange(request.path);
  Node value;
  if (!request.values.empty()) ReadValues(request, &value);
  RefuseUnless(!request.values.empty() || request.comment || request.inline_comment,
               "set needs a value or a comment", ExitWrongCall);
  RefuseUnless(request.comment != "", "an empty comment can't be stored", ExitWrongCall);

  Rewrite rewrite(request.file, Rewrite::Purpose::Replace);
  Node* const node = MakeNode(&rewrite.wanted, path);
  bool stored = true;
  if (!request.values.empty()) {
    node->type = value.type;
    node->text = value.text;
    node->numbers = value.numbers;
    stored = StoreValue(value, path.c_str(), &rewrite.config());
  }
  if (request.comment) {
    node->comment = *request.comment + '\n';
    stored = stored && rewrite.config().SetComment(request.comment->c_str(), path.c_str());
  }
  if (request.inline_comment) {
    node->inline_comment = *request.inline_comment;
    stored =
        stored && rewrite.config().SetComment(request.inline_comment->c_str(), path.c_str(), true);
  }
  RefuseUnless(stored, request.file + ": '" + request.path + "': " + FirstRefusal());
  rewrite.Render(request.allow_comment_loss);
  rewrite.Replace();
  return ExitDone;
}

int Format(const FormatRequest& request) {
  int result = ExitDone;
  for (const std::string& file : request.files) {
    try {
      if (FormatOne(file, request) != ExitDone) result = ExitRefused;
    } catch (const Refusal& refusal) {
      result = ExitRefused;
      Complain(refusal.what());
    }
  }
  return result;
}

int Unset(const std::string& file, const std::string& path, bool allow_comment_loss) {
  const std::string own_path = PathToChange(path);
  Rewrite rewrite(file, Rewrite::Purpose::Replace);
  RequireOwn(&rewrite, own_path);
  RemoveNode(&rewrite.wanted, own_path);
  RefuseUnless(rewrite.config().RemoveSection(own_path.c_str()), file + ": " + FirstRefusal());
  rewrite.Render(allow_comment_loss);
  rewrite.Replace();
  return ExitDone;
}

int Rename(const std::string& file, const std::string& path, const std::string& name,
           bool allow_comment_loss) {
  const std::string own_path = PathToChange(path);
  const std::string new_name = PathFromShell(name);
  RefuseUnless(IsName(new_name), "'" + name + "' is no name of a section");
  Rewrite rewrite(file, Rewrite::Purpose::Replace);
  RequireOwn(&rewrite, own_path);
  const std::string holder = own_path.substr(0, own_path.rfind('.') + 1);
  RefuseUnless(
      own_path == holder + new_name || FindNode(rewrite.wanted, holder + new_name) == nullptr,
      file + ": '" + NameToUtf8(holder + new_name) + "' is there already");
  MakeNode(&rewrite.wanted, own_path)->name = new_name;
  RefuseUnless(rewrite.config().SetName(new_name.c_str(), own_path.c_str()),
               file + ": '" + path + "' can't be renamed");
  rewrite.Render(allow_comment_loss);
  rewrite.Replace();
  return ExitDone;
}

}  // namespace confgrove::Tool
