// Rewriting a file by way of a copy.
#include "rewrite.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

#include "messages.h"
#include "refusal.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

namespace fs = std::filesystem;

void Check(const std::error_code& error, const std::string& what) {
  if (error) throw Refusal(what + ": " + error.message());
}

// The file behind all symbolic links.
std::string RealPath(const FileName& name) {
  RequireReadable(name.PathOf(name.name), name.shown);
  std::error_code error;
  const fs::path path = fs::canonical(name.PathOf(name.name), error);
  Check(error, name.shown);
  return path.string();
}

std::string DirectoryOf(const std::string& path) { return fs::path(path).parent_path().string(); }

// The first save of a process leaves no blank line above a comment of the first section, and later
// ones do. All files get the form of a first save.
std::string WithoutLeadingBlank(const std::string& text) {
  const auto skip_lines = [&text](std::size_t at, const char* start) {
    while (text.compare(at, std::char_traits<char>::length(start), start) == 0) {
      at = std::min(text.find('\n', at), text.size() - 1) + 1;
    }
    return at;
  };
  constexpr const char* Import = "$import \"";
  const std::size_t head = skip_lines(0, "#");
  const std::size_t imports = std::min(head + 1, text.size());
  std::size_t first_section = skip_lines(imports, Import);
  first_section = first_section == imports ? head : std::min(first_section + 1, text.size());
  std::string result = text;
  if (result.compare(first_section, 1, "\n") == 0) result.erase(first_section, 1);
  return result;
}

// The name under which the library finds `path` with the settings of `name`.
FileName CopyName(const FileName& name, const std::string& path) {
  const fs::path root = name.directory.empty() ? "." : name.directory;
  std::error_code error;
  const fs::path directory = fs::relative(DirectoryOf(path), root, error);
  Check(error, name.shown);
  FileName copy = name;
  copy.name = (fs::path(".") / directory / fs::path(path).filename()).string();
  copy.shown = name.shown + " (as it would be written)";
  if (!fs::equivalent(copy.PathOf(copy.name), path, error)) {
    throw Refusal(name.shown + ": the library can't open a copy at " + path);
  }
  return copy;
}

void CountComments(const Node& node, std::map<std::string, int>* counts) {
  for (std::size_t start = 0; start < node.comment.size();) {
    const std::size_t end = node.comment.find('\n', start);
    ++(*counts)[node.comment.substr(start, end - start)];
    start = end + 1;
  }
  ++(*counts)[node.inline_comment];
  for (const Node& child : node.children) CountComments(child, counts);
}

std::string AtLine(const Piece& piece) { return "line " + std::to_string(piece.line) + ": "; }

// What the text holds and the tree doesn't.
Differences MissingFromTree(const Outline& outline) {
  Differences missing;
  for (const Piece& piece : outline.passed_over) {
    missing.settings.push_back(AtLine(piece) + "'" + Printable(piece.text) +
                               "' is passed over by the reader and would be lost");
  }
  const std::size_t nul = outline.text.find('\0');
  if (nul != std::string::npos) missing.settings.emplace_back("it holds a NUL byte");
  for (const Piece& piece : outline.block_comments) {
    missing.comments.push_back(AtLine(piece) + "the block comment would be lost");
  }
  std::map<std::string, int> kept;
  CountComments(outline.top, &kept);
  for (const Piece& piece : outline.comments) {
    if (!piece.text.empty() && kept[piece.text]-- <= 0) {
      missing.comments.push_back(AtLine(piece) + "the comment '#" + Printable(piece.text) +
                                 "' belongs to no section and would be lost");
    }
  }
  return missing;
}

}  // namespace

ScratchFile::ScratchFile(const std::string& prefix, const std::string& shown) {
  Check(Platform::CreateUnique(prefix, &path_), shown + ": a copy can't be made");
}

ScratchFile::~ScratchFile() { std::remove(path_.c_str()); }

Rewrite::Rewrite(const std::string& path_of_shell, Purpose purpose)
    : name_(path_of_shell), target_(RealPath(name_)), purpose_(purpose), source_([this] {
        if (purpose_ == Purpose::Replace) {
          lock_.emplace(DirectoryOf(target_));
          Check(Platform::CheckWritable(target_), name_.shown);
        }
        return OpenFile(name_);
      }()) {
  wanted = source_.outline.top;
}

const std::string& Rewrite::Render(bool allow_comment_loss) {
  const fs::path directory =
      purpose_ == Purpose::Replace ? fs::path(DirectoryOf(target_)) : fs::temp_directory_path();
  copy_.emplace((directory / ("." + name_.base + ".")).string(), name_.shown);
  const FileName copy = CopyName(name_, copy_->path());
  config().SetName(copy.name.c_str(), "");
  SavedText(&config(), copy);
  try {
    // A changed tree can hold traces of what it held before. The second save is free of them.
    text_ = WithoutLeadingBlank(SavedText(LoadConfig(copy).get(), copy));
    Check(Platform::WriteFile(copy_->path(), text_), name_.shown + ": a copy can't be written");
    const OpenFile written(copy);
    RefuseLosses(written.outline, allow_comment_loss);
  } catch (const Refusal& refusal) {
    if (*refusal.what() != '\0') throw;
    throw Refusal(name_.shown + ": left as it is: what would be written can't be read");
  }
  return text_;
}

// Saves to the copy and gives what stands there.
std::string Rewrite::SavedText(Config* config, const FileName& copy) const {
  const bool saved = config->Save();
  std::string text = ReadText(copy_->path(), copy.shown);
  // The library doesn't report a write that fails, but a text cut short ends anywhere.
  const bool expects_text = std::any_of(wanted.children.begin(), wanted.children.end(),
                                        [](const Node& child) { return !IsBlank(child); });
  const bool complete = text.empty() ? !expects_text : text.back() == '\n';
  if (saved && complete) return text;
  throw Refusal(name_.shown + ": left as it is: a copy can't be written in full; is there room?");
}

void Rewrite::RefuseLosses(const Outline& written, bool allow_comment_loss) const {
  Differences losses = MissingFromTree(source_.outline);
  const Differences changes = CompareTrees(wanted, written.top);
  losses.settings.insert(losses.settings.end(), changes.settings.begin(), changes.settings.end());
  losses.comments.insert(losses.comments.end(), changes.comments.begin(), changes.comments.end());
  const std::set<std::string> before(source_.outline.imports.begin(),
                                     source_.outline.imports.end());
  if (before != std::set<std::string>(written.imports.begin(), written.imports.end())) {
    losses.settings.emplace_back("the imports would change");
  }
  if (allow_comment_loss) losses.comments.clear();
  if (losses.settings.empty() && losses.comments.empty()) return;

  for (const std::string& loss : losses.settings) Complain(name_.shown + ": " + loss);
  for (const std::string& loss : losses.comments) Complain(name_.shown + ": " + loss);
  throw Refusal(name_.shown + ": left as it is" +
                (losses.settings.empty() ? "; --allow-comment-loss would go on" : ""));
}

void Rewrite::Replace() {
  if (text_ == source_.text) return;
  if (ReadText(target_, name_.shown) != source_.text) {
    throw Refusal(name_.shown + ": left as it is: another program has changed it meanwhile");
  }
  Check(Platform::PutInPlace(copy_->path(), target_), name_.shown);
}

}  // namespace confgrove::Tool
