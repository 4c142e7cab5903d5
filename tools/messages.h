// The library's messages, as the tool shows them.
#ifndef CONFGROVE_TOOLS_MESSAGES_H
#define CONFGROVE_TOOLS_MESSAGES_H

#include <string>

namespace confgrove::Tool {

// Takes the library's messages from now on. They are kept until they are forgotten.
void CollectMessages();
void ForgetMessages();

// Refuses for a look-up of `path`, in the bytes of the file, that has found nothing.
[[noreturn]] void RefuseMissing(const std::string& file, const std::string& path);

// The first message that is kept, but for those about places in files; "" if there is none.
std::string FirstRefusal();

}  // namespace confgrove::Tool

#endif
