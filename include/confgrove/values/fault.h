// Fault: what is wrong with a setting, as data and as text.
#ifndef CONFGROVE_VALUES_FAULT_H
#define CONFGROVE_VALUES_FAULT_H

#include <confgrove/inspect.h>
#include <confgrove/problem.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace confgrove::detail {

// One text after the other. Keeps what is written out below short, for the sake of compile time.
CONFGROVE_COLD inline std::string Glue(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces) text.append(piece.data(), piece.size());
  return text;
}

}  // namespace confgrove::detail

namespace confgrove {
inline namespace values {  // the library has a Fault of its own within

enum class FaultKind : std::int32_t {
  None = 0,
  Missing = 1,      // a required setting isn't there
  WrongKind = 2,    // a text for a number, a value for a block
  NotWhole = 3,     // a fraction where a whole number is wanted
  OutOfRange = 4,   // of the type, or of a rule
  WrongLength = 5,  // of an array or a text
  UnknownName = 6,  // none of those that are allowed
  DeadLink = 7,     // it leads nowhere, or in a circle
  Refused = 8,      // by a rule or by the host, or by Write since a file can't hold the value
  Unread = 9,       // nobody has asked for it
  OldName = 10      // found under a name that it once had
};

struct Fault {
  Severity severity = Severity::Error;
  FaultKind kind = FaultKind::None;
  std::string path{};    // of the setting, from the top
  std::string wanted{};  // in plain words: "a whole number from 1 to 65535"; "" of no use
  std::string found{};   // as a file would say it: "70000"; "" if there is nothing
  std::string note{};    // more about it: "did you mean port?"; "" for nothing
  Place place{};         // of the setting; of the block, or of the file alone, where it is missing
};

inline bool HasErrors(const std::vector<Fault>& faults) {
  // NOLINTNEXTLINE(readability-use-anyofallof): <algorithm> takes long to compile
  for (const Fault& fault : faults) {
    if (fault.severity == Severity::Error) return true;
  }
  return false;
}

// What is wrong, without its place: "port: wanted a whole number, found 1.5".
CONFGROVE_COLD inline std::string Message(const Fault& fault) {
  return detail::Glue({fault.path, fault.path.empty() ? "" : ": ",
                       fault.kind == FaultKind::Missing ? "missing, " : "",
                       fault.wanted.empty() ? "" : "wanted ", fault.wanted,
                       fault.found.empty() ? "" : ", found ", fault.found,
                       fault.note.empty() || fault.wanted.empty() ? "" : "; ", fault.note});
}

// One line for each: "server.cfg:7:5: error: port: wanted a whole number, found 1.5\n".
CONFGROVE_COLD inline std::string ToText(const std::vector<Fault>& faults) {
  std::string text;
  for (const Fault& fault : faults) {
    const bool is_error = fault.severity == Severity::Error;
    char numbers[32] = "";
    if (fault.place.line > 0) {
      std::snprintf(numbers, sizeof numbers, ":%d:%d", fault.place.line, fault.place.column);
    }
    text += detail::Glue(
        {fault.place.file, numbers, is_error ? ": error: " : ": warning: ", Message(fault), "\n"});
  }
  return text;
}

// The line of the place as it is in the file, and marks below what stands there; each ends in a
// line end. "" if the place has no line, or the file can't be read.
CONFGROVE_COLD inline std::string Excerpt(const Place& place) {
  std::string text;
  if (place.line == 0) return text;
  std::FILE* const file = std::fopen(place.file.c_str(), "rb");
  if (file == nullptr) return text;
  char buffer[4096];
  for (std::size_t got = 1; got > 0;) {
    got = std::fread(buffer, 1, sizeof buffer, file);
    text.append(buffer, got);
  }
  std::fclose(file);
  if (place.offset > text.size()) return {};
  const std::size_t begin = text.find_last_of("\r\n", place.offset) + 1;
  std::string line = text.substr(begin, text.find_first_of("\r\n", begin) - begin) + '\n';
  for (std::int32_t column = 1; column < place.column; ++column) {
    const auto at = begin + static_cast<std::size_t>(column) - 1;
    line += at < place.offset && text[at] == '\t' ? '\t' : ' ';
  }
  return line + std::string(place.length, '^') + '\n';
}

}  // namespace values
}  // namespace confgrove

#endif
