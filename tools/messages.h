// The library's messages, as the tool shows them.
#ifndef CONFGROVE_TOOLS_MESSAGES_H
#define CONFGROVE_TOOLS_MESSAGES_H

#include <string>

#include "file_name.h"

namespace confgrove::Tool {

// Takes the library's messages from now on. They are kept until they are shown or forgotten.
void CollectMessages();
void ForgetMessages();

// Sends the errors of a load of `file` to standard error, each with its source line, and the
// warnings too if asked.
void ShowMessages(const FileName& file, bool with_warnings);

// The first message that is kept and has no place in a file; "" if there is none.
std::string FirstRefusal();

}  // namespace confgrove::Tool

#endif
