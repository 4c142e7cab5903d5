// Makes a change that is named on the command line. Each library has a program of its own.
#include <cstdio>
#include <exception>
#include <map>
#include <stdexcept>

#include "edit.h"

int main(int argc, char** argv) {
  const std::map<std::string, edits::Change> changes = {
      {"set", edits::Change::Set}, {"add", edits::Change::Add}, {"remove", edits::Change::Remove}};
  try {
    if (argc != 3) throw std::runtime_error("usage: set|add|remove FILE");
    edits::Make(changes.at(argv[1]), argv[2]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
    return 1;
  }
}
