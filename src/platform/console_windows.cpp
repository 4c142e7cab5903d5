// Standard streams, for Windows.
#include "platform/console.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "platform/unique_name.h"
#include "platform/windows_api.h"

namespace confgrove::Platform {

void PassBytes() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
  ::SetConsoleOutputCP(CP_UTF8);
}

void LetLargeWritesFail() {}  // the system knows no such limit

std::error_code MakeOwnFile(const std::string& prefix, const std::string& suffix,
                            std::string* path) {
  for (;;) {
    const std::string name =
        prefix + UniqueLetters(::GetCurrentProcessId(), ::GetTickCount64()) + suffix;
    const bool made = Handle(name, GENERIC_WRITE, CREATE_NEW).is_open();
    const std::error_code error = made ? std::error_code() : LastError();
    if (error == std::errc::file_exists) continue;
    if (made) *path = name;
    return error;
  }
}

bool StandardOutputIsTerminal() { return ::_isatty(::_fileno(stdout)) != 0; }

bool StandardErrorIsTerminal() { return ::_isatty(::_fileno(stderr)) != 0; }

}  // namespace confgrove::Platform

// The system's shell library would take the call apart too, but takes as long to load as all else.
int wmain(int argc, wchar_t** argv) {
  return confgrove::Tool::Main([=] {
    std::vector<std::string> arguments;
    for (int i = 0; i < argc; i++) arguments.push_back(confgrove::Platform::Utf8Name(argv[i]));
    return arguments;
  });
}
