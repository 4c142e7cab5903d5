// The `confgrove` command: its options and commands.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>

#include "commands.h"
#include "messages.h"
#include "platform/replace_file.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

// What the calls of all commands hold; each uses its part.
struct Arguments {
  std::string file;
  std::string path;
  std::string name;
  std::vector<std::string> files;
  bool as_type = false;
  bool as_comment = false;
  bool as_inline_comment = false;
  bool as_json = false;
  bool as_string = false;
  bool as_link = false;
  bool allow_comment_loss = false;
  SetRequest set;
  FormatRequest format;
  std::function<int()> command;
};

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

void AddReading(CLI::App* app, Arguments* given) {
  CLI::App* const check = app->add_subcommand("check", "Show all errors and warnings of files");
  AddFiles(check, &given->files);
  check->callback([given] { given->command = [given] { return Check(given->files); }; });

  CLI::App* const get = app->add_subcommand("get", "Print a value, an array one number a line");
  AddFile(get, &given->file);
  AddPath(get, &given->path);
  CLI::Option* const type_flag = get->add_flag(
      "--type", given->as_type, "Print its kind: string, number, array, block or none");
  CLI::Option* const comment_flag =
      get->add_flag("--comment", given->as_comment, "Print the comment above it")
          ->excludes(type_flag);
  get->add_flag("--inline", given->as_inline_comment, "Print the comment behind it")
      ->excludes(type_flag)
      ->excludes(comment_flag);
  get->callback([given] {
    const Question question = given->as_type             ? Question::Type
                              : given->as_comment        ? Question::Comment
                              : given->as_inline_comment ? Question::InlineComment
                                                         : Question::Value;
    given->command = [given, question] { return Get(given->file, given->path, question); };
  });

  CLI::App* const list = app->add_subcommand("list", "Print the sections of a file in their order");
  AddFile(list, &given->file);
  AddText(list, "PATH", &given->path, "The section to begin at; the whole file without it");
  list->add_flag("--json", given->as_json, "As JSON, with the comments");
  list->callback([given] {
    given->command = [given] { return List(given->file, given->path, given->as_json); };
  });

  CLI::App* const imports = app->add_subcommand("imports", "Print the tree of imported files");
  AddFile(imports, &given->file);
  imports->callback([given] { given->command = [given] { return Imports(given->file); }; });
}

void AddWriting(CLI::App* app, Arguments* given) {
  CLI::App* const set = app->add_subcommand("set", "Give a section a value or a comment");
  AddFile(set, &given->set.file);
  AddPath(set, &given->set.path);
  AddText(set, "VALUE", &given->set.values,
          "Numbers make a number or an array, @path a link, all else a text");
  CLI::Option* const string_flag =
      set->add_flag("--string", given->as_string, "VALUE is a text whatever it looks like");
  set->add_flag("--link", given->as_link, "VALUE is the path that a link leads to")
      ->excludes(string_flag);
  AddText(set, "--comment", &given->set.comment, "The comment above, without '#'");
  AddText(set, "--inline", &given->set.inline_comment, "The comment behind; \"\" removes it");
  AddCommentLoss(set, &given->set.allow_comment_loss);
  set->callback([given] {
    if (given->as_string) given->set.kind = ValueKind::String;
    if (given->as_link) given->set.kind = ValueKind::Link;
    given->command = [given] { return Set(given->set); };
  });

  CLI::App* const format = app->add_subcommand("format", "Give files their canonical form");
  AddFiles(format, &given->format.files);
  format->add_flag("--check", given->format.check,
                   "Write nothing; exit code 1 if a file isn't canonical");
  format->add_flag("--diff", given->format.diff, "Write nothing; print what would change");
  AddCommentLoss(format, &given->format.allow_comment_loss);
  format->callback([given] { given->command = [given] { return Format(given->format); }; });

  CLI::App* const unset = app->add_subcommand("unset", "Remove a section and all below it");
  AddFile(unset, &given->file);
  AddPath(unset, &given->path);
  AddCommentLoss(unset, &given->allow_comment_loss);
  unset->callback([given] {
    given->command = [given] { return Unset(given->file, given->path, given->allow_comment_loss); };
  });

  CLI::App* const rename = app->add_subcommand("rename", "Give a section another name");
  AddFile(rename, &given->file);
  AddPath(rename, &given->path);
  AddText(rename, "NAME", &given->name, "The new name, without dots")->required();
  AddCommentLoss(rename, &given->allow_comment_loss);
  rename->callback([given] {
    given->command = [given] {
      return Rename(given->file, given->path, given->name, given->allow_comment_loss);
    };
  });
}

int Run(int argc, char** argv) {
  CLI::App app("Reads, checks and changes configuration files without losing a setting.",
               "confgrove");
  app.set_version_flag("--version", "confgrove " CONFGROVE_VERSION);
  app.require_subcommand(1);
  app.footer("Exit code: 0 done, 1 not found, faulty or refused, 2 a wrong call.");
  Arguments given;
  AddReading(&app, &given);
  AddWriting(&app, &given);
  try {
    app.parse(Protected(argc, argv));
    return given.command();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitDone : ExitWrongCall;
  } catch (const Refusal& refusal) {
    Complain(refusal.what());
    return refusal.code;
  }
}

// Runs the command, and sees that its answer has gone out.
int RunAndFlush(int argc, char** argv) {
  Platform::LetLargeWritesFail();
  CollectMessages();
  const int code = Run(argc, argv);
  std::cout.flush();
  if (std::cout) return code;
  Complain("standard output can't be written");
  return ExitRefused;
}

}  // namespace
}  // namespace confgrove::Tool

int main(int argc, char** argv) {
  try {
    return confgrove::Tool::RunAndFlush(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "confgrove: %s\n", error.what());
    return confgrove::Tool::ExitRefused;
  }
}
