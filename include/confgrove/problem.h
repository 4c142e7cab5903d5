// SPDX-License-Identifier: MIT
// Problem: what is wrong with a file, as data.
#ifndef CONFGROVE_PROBLEM_H
#define CONFGROVE_PROBLEM_H

#include <confgrove/export.h>
#include <confgrove/inspect.h>
#include <confgrove/save_in_place.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace confgrove {

enum class Severity : std::int32_t { Error = 1, Warning = 2 };

// Another place that a problem has to do with.
struct Related {
  Place place;
  std::string text;
};

// A way out.
struct Fix {
  std::string text;         // what it does, in plain words
  std::string file;         // the one to edit
  std::vector<Edit> edits;  // of the bytes on the disk
  std::int64_t safe = 0;    // 1: takes the problem away and brings no new one; 0: a guess
};

struct Problem {
  Severity severity = Severity::Error;
  std::int32_t message_line = 0;  // the line that the library's message names; 0 without one
  std::string code;               // a stable slug: "redefinition"
  std::string message;            // the library's own, to the letter; "" where it is silent
  std::string text;               // in plain words
  Place place;
  std::vector<Related> related;
  std::vector<Fix> fixes;
  std::int32_t follows = -1;  // the problem, by index, that this one follows from; -1: none
  std::int32_t unread = 0;    // 1: stands behind the place where programs stop reading
};

// All problems of a file and of what it imports, by file and place: none for a sound file of
// ordinary make. The file is faulty, so that no program can open it, if and only if one of those
// that are read is an error. `file` is a path of the system. Sends no message.
CONFGROVE_API std::vector<Problem> Check(const std::string& file);

}  // namespace confgrove

#endif
