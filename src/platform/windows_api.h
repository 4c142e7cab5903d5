// <windows.h>, as little of it as can be had, and handles that close themselves.
#ifndef CONFGROVE_PLATFORM_WINDOWS_API_H
#define CONFGROVE_PLATFORM_WINDOWS_API_H

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <string>
#include <utility>

#include "platform/platform.h"
#include "platform/windows_names.h"

namespace confgrove::Platform {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// An open file. No other process is kept from it, unless `share` says so.
class Handle {
 public:
  Handle(const std::string& path, DWORD access, DWORD creation = OPEN_EXISTING,
         DWORD flags = FILE_ATTRIBUTE_NORMAL, DWORD share = ShareAll)
      : handle_(::CreateFileW(WideName(path).c_str(), access, share, nullptr, creation, flags,
                              nullptr)) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Close(); }

  bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

  HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

  // Whether the system has taken all.
  bool Close() {
    const HANDLE handle = Release();
    return handle == INVALID_HANDLE_VALUE || ::CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_;
};

// A console, NUL and the like: reading would wait for somebody or give nothing.
inline bool IsDevice(HANDLE handle) { return ::GetFileType(handle) == FILE_TYPE_CHAR; }

}  // namespace confgrove::Platform

#endif
