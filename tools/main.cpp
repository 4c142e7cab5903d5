// The `confgrove` command: its options and commands.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <functional>
#include <iostream>

#include "commands.h"
#include "messages.h"
#include "platform/replace_file.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

using Command = std::function<int()>;

// CLI11 splits an argument in brackets and takes "++" for its own. A byte that no argument can hold
// keeps it from both, and goes when the argument is stored.
std::vector<std::string> Protected(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  for (std::string& argument : arguments) {
    const bool in_brackets = !argument.empty() && argument.front() == '[' && argument.back() == ']';
    if (in_brackets || argument == "++") argument += '\0';
  }
  std::reverse(arguments.begin(), arguments.end());  // as CLI11 takes a vector
  return arguments;
}

template <typename Value>
CLI::Option* AddText(CLI::App* command, const std::string& name, Value* value,
                     const std::string& help) {
  return command->add_option(name, *value, help)->transform([](const std::string& argument) {
    return argument.substr(0, argument.find('\0'));
  });
}

void AddFile(CLI::App* command, std::string* file) {
  AddText(command, "FILE", file, "The configuration file")->required();
}

void AddFiles(CLI::App* command, std::vector<std::string>* files) {
  AddText(command, "FILE", files, "The configuration files")->required();
}

void AddPath(CLI::App* command, std::string* path) {
  AddText(command, "PATH", path, "Names joined by dots: limits.rate")->required();
}

void AddCommentLoss(CLI::App* command, bool* allow) {
  command->add_flag("--allow-comment-loss", *allow,
                    "Go on though comments that have no place in the tree are lost");
}

void AddReading(CLI::App* app, Command* run) {
  static std::vector<std::string> files;
  static std::string file, path;
  static bool type = false, comment = false, inline_comment = false, json = false;

  CLI::App* const check = app->add_subcommand("check", "Show all errors and warnings of files");
  AddFiles(check, &files);
  check->callback([run] { *run = [] { return Check(files); }; });

  CLI::App* const get = app->add_subcommand("get", "Print a value, an array one number a line");
  AddFile(get, &file);
  AddPath(get, &path);
  CLI::Option* const type_flag =
      get->add_flag("--type", type, "Print its kind: string, number, array, block or none");
  CLI::Option* const comment_flag =
      get->add_flag("--comment", comment, "Print the comment above it")->excludes(type_flag);
  get->add_flag("--inline", inline_comment, "Print the comment behind it")
      ->excludes(type_flag)
      ->excludes(comment_flag);
  get->callback([run] {
    *run = [] {
      return Get(file, path,
                 type             ? Question::Type
                 : comment        ? Question::Comment
                 : inline_comment ? Question::InlineComment
                                  : Question::Value);
    };
  });

  CLI::App* const list = app->add_subcommand("list", "Print the sections of a file in their order");
  AddFile(list, &file);
  AddText(list, "PATH", &path, "The section to begin at; the whole file without it");
  list->add_flag("--json", json, "As JSON, with the comments");
  list->callback([run] { *run = [] { return List(file, path, json); }; });

  CLI::App* const imports = app->add_subcommand("imports", "Print the tree of imported files");
  AddFile(imports, &file);
  imports->callback([run] { *run = [] { return Imports(file); }; });
}

void AddWriting(CLI::App* app, Command* run) {
  static SetRequest set_request;
  static FormatRequest format_request;
  static std::string file, path, name;
  static bool allow_comment_loss = false;
  static bool as_string = false, as_link = false;

  CLI::App* const set = app->add_subcommand("set", "Give a section a value or a comment");
  AddFile(set, &set_request.file);
  AddPath(set, &set_request.path);
  AddText(set, "VALUE", &set_request.values,
          "Numbers make a number or an array, @path a link, all else a text");
  CLI::Option* const string_flag =
      set->add_flag("--string", as_string, "VALUE is a text whatever it looks like");
  set->add_flag("--link", as_link, "VALUE is the path that a link leads to")->excludes(string_flag);
  AddText(set, "--comment", &set_request.comment, "The comment above, without '#'");
  AddText(set, "--inline", &set_request.inline_comment, "The comment behind; \"\" removes it");
  AddCommentLoss(set, &set_request.allow_comment_loss);
  set->callback([run] {
    *run = [] {
      if (as_string) set_request.kind = ValueKind::String;
      if (as_link) set_request.kind = ValueKind::Link;
      return Set(set_request);
    };
  });

  CLI::App* const format = app->add_subcommand("format", "Give files their canonical form");
  AddFiles(format, &format_request.files);
  format->add_flag("--check", format_request.check,
                   "Write nothing; exit code 1 if a file isn't canonical");
  format->add_flag("--diff", format_request.diff, "Write nothing; print what would change");
  AddCommentLoss(format, &format_request.allow_comment_loss);
  format->callback([run] { *run = [] { return Format(format_request); }; });

  CLI::App* const unset = app->add_subcommand("unset", "Remove a section and all below it");
  AddFile(unset, &file);
  AddPath(unset, &path);
  AddCommentLoss(unset, &allow_comment_loss);
  unset->callback([run] { *run = [] { return Unset(file, path, allow_comment_loss); }; });

  CLI::App* const rename = app->add_subcommand("rename", "Give a section another name");
  AddFile(rename, &file);
  AddPath(rename, &path);
  AddText(rename, "NAME", &name, "The new name, without dots")->required();
  AddCommentLoss(rename, &allow_comment_loss);
  rename->callback([run] { *run = [] { return Rename(file, path, name, allow_comment_loss); }; });
}

int Run(int argc, char** argv) {
  CLI::App app("Reads, checks and changes configuration files without losing a setting.",
               "confgrove");
  app.set_version_flag("--version", "confgrove " CONFGROVE_VERSION);
  app.require_subcommand(1);
  app.footer("Exit code: 0 done, 1 not found, faulty or refused, 2 a wrong call.");
  Command run;
  AddReading(&app, &run);
  AddWriting(&app, &run);
  try {
    app.parse(Protected(argc, argv));
    return run();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitDone : ExitWrongCall;
  } catch (const Refusal& refusal) {
    Complain(refusal.what());
    return refusal.code;
  } catch (const std::exception& error) {
    Complain(error.what());
    return ExitRefused;
  }
}

}  // namespace
}  // namespace confgrove::Tool

int main(int argc, char** argv) {
  using namespace confgrove;
  Platform::LetLargeWritesFail();
  Tool::CollectMessages();
  const int code = Tool::Run(argc, argv);
  std::cout.flush();
  if (std::cout) return code;
  Tool::Complain("standard output can't be written");
  return Tool::ExitRefused;
}
