// What the command-line tool asks of the system: how its answers go out, and who reads them. The
// library doesn't use it. console_posix.cpp and console_windows.cpp each answer all of it.
#ifndef CONFGROVE_PLATFORM_CONSOLE_H
#define CONFGROVE_PLATFORM_CONSOLE_H

#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace confgrove::Tool {

// The program, which the system's own kind of main calls; returns its exit code. `arguments` gives
// those of the call, the program's name first: in UTF-8 where the system knows letters, and the
// bytes that came elsewhere.
int Main(const std::function<std::vector<std::string>()>& arguments);

}  // namespace confgrove::Tool

namespace confgrove::Platform {

// From now on bytes pass the standard streams as they are, and a console takes them for UTF-8.
void PassBytes();

// From now on a write beyond the file size limit fails, as a write should, and doesn't end the
// process.
void LetLargeWritesFail();

// Makes an empty file that nobody else can read. Its path, `prefix`, letters that make it unlike
// any other, and `suffix`, goes into `*path`.
std::error_code MakeOwnFile(const std::string& prefix, const std::string& suffix,
                            std::string* path);

// Whether what goes there is read by a person.
bool StandardOutputIsTerminal();
bool StandardErrorIsTerminal();

}  // namespace confgrove::Platform

#endif
