// Names and errors, between the library and Windows.
#include "platform/windows_names.h"

#include "platform/windows_api.h"

namespace confgrove::Platform {
namespace {

// "" if the bytes aren't of this code page.
std::wstring Decode(const std::string& bytes, UINT code_page, DWORD flags) {
  const int size = static_cast<int>(bytes.size());
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  const int length = ::MultiByteToWideChar(code_page, flags, bytes.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

bool StartsWith(const std::wstring& text, const wchar_t* start) {
  return text.rfind(start, 0) == 0;
}

}  // namespace

std::wstring FullName(const std::wstring& path) {
  std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

std::wstring WideName(const std::string& path) {
  constexpr std::size_t LongestOrdinary = 247;  // of a directory: room for a short name is left
  std::wstring wide = Decode(path, CP_UTF8, MB_ERR_INVALID_CHARS);
  if (wide.empty()) wide = Decode(path, CP_ACP, 0);
  if (wide.size() <= LongestOrdinary || StartsWith(wide, LR"(\\?\)")) return wide;
  const std::wstring full = FullName(wide);
  if (full.empty() || StartsWith(full, LR"(\\.\)")) return wide;
  return StartsWith(full, LR"(\\)") ? LR"(\\?\UNC\)" + full.substr(2) : LR"(\\?\)" + full;
}

std::string Utf8Name(const std::wstring& path) {
  const int length = static_cast<int>(path.size());
  std::string bytes(path.size() * 3, '\0');
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, path.data(), length, bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

std::error_code LastError() {
  const DWORD error = ::GetLastError();
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME: return std::make_error_code(std::errc::no_such_file_or_directory);
    case ERROR_ACCESS_DENIED: return std::make_error_code(std::errc::permission_denied);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return std::make_error_code(std::errc::file_exists);
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL: return std::make_error_code(std::errc::no_space_on_device);
    default: return {static_cast<int>(error), std::system_category()};
  }
}

}  // namespace confgrove::Platform
