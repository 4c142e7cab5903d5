// Refusal: how a command of the tool ends when it can't do what it was asked.
#ifndef CONFGROVE_TOOLS_REFUSAL_H
#define CONFGROVE_TOOLS_REFUSAL_H

#include <stdexcept>
#include <string>

namespace confgrove::Tool {

enum ExitCode : int { ExitDone = 0, ExitRefused = 1, ExitWrongCall = 2 };

// What stands between the user and the result; "" if all has been said already.
class Refusal : public std::runtime_error {
 public:
  explicit Refusal(const std::string& reason, ExitCode exit_code = ExitRefused)
      : std::runtime_error(reason), code(exit_code) {}

  ExitCode code;
};

// Refuses unless `condition` holds.
void RefuseUnless(bool condition, const std::string& reason, ExitCode code = ExitRefused);

// Sends one complaint to standard error, unless it is "".
void Complain(const std::string& text);

}  // namespace confgrove::Tool

#endif
