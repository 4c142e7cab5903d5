// Names and errors, between the library and Windows.
#ifndef CONFGROVE_PLATFORM_WINDOWS_NAMES_H
#define CONFGROVE_PLATFORM_WINDOWS_NAMES_H

#include <string>
#include <system_error>

namespace confgrove::Platform {

// A path for the wide functions. Bytes that are valid UTF-8 are UTF-8, others are in the active
// code page. A path that is too long for ordinary functions is made absolute, with \\?\ before it.
std::wstring WideName(const std::string& path);

// The same file by its absolute path, without points and blanks that the system drops.
std::wstring FullName(const std::wstring& path);

std::string Utf8Name(const std::wstring& path);

// Of GetLastError, as an errno where there is one that tells as much.
std::error_code LastError();

}  // namespace confgrove::Platform

#endif
