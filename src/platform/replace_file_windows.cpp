// Replacing a file, for Windows.
#include "platform/replace_file.h"

#include <algorithm>
#include <vector>

#include "platform/unique_name.h"
#include "platform/windows_api.h"

namespace confgrove::Platform {
namespace {

std::error_code Checked(bool done) { return done ? std::error_code() : LastError(); }

// With the separator, or the colon behind a drive; "" for a name alone.
std::size_t EndOfDirectory(const std::string& path) { return path.find_last_of("/\\:") + 1; }

// The one name of what is open, without links. "" if there is none.
std::wstring FinalName(const Handle& file) {
  std::wstring name(::GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0), L'\0');
  name.resize(
      ::GetFinalPathNameByHandleW(file.get(), name.data(), static_cast<DWORD>(name.size()), 0));
  return name;
}

// Of the directory, for all sessions: a name that tells it from most others.
std::wstring MutexName(const std::string& directory) {
  const Handle opened(directory, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  std::uint64_t hash = 0xcbf29ce484222325;  // FNV-1a
  for (const wchar_t letter : FinalName(opened)) {
    hash = (hash ^ static_cast<std::uint64_t>(letter)) * 0x100000001b3;
  }
  return L"Global\\confgrove-" + std::to_wstring(hash);
}

// Gives `copy` the access list of `target`, where the file system has any.
bool KeepRights(const std::string& target, const std::string& copy) {
  constexpr SECURITY_INFORMATION Rights = DACL_SECURITY_INFORMATION;
  DWORD size = 0;
  ::GetFileSecurityW(WideName(target).c_str(), Rights, nullptr, 0, &size);
  std::vector<char> descriptor(size);
  return size == 0 ||
         (::GetFileSecurityW(WideName(target).c_str(), Rights, descriptor.data(), size, &size) &&
          ::SetFileSecurityW(WideName(copy).c_str(), Rights, descriptor.data()));
}

}  // namespace

std::error_code FollowLinks(const std::string& path, std::string* directory, std::string* name) {
  std::wstring wide = WideName(path);
  const DWORD attributes = ::GetFileAttributesW(wide.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file.is_open()) return LastError();
    wide = FinalName(file);
  } else {
    wide = FullName(wide);
  }
  *name = Utf8Name(wide);
  *directory = name->substr(0, EndOfDirectory(*name));
  name->erase(0, directory->size());
  return {};
}

DirectoryLock::DirectoryLock(const std::string& directory)
    : handle_(reinterpret_cast<std::intptr_t>(
          ::CreateMutexW(nullptr, FALSE, MutexName(directory).c_str()))) {
  if (handle_ != 0) ::WaitForSingleObject(reinterpret_cast<HANDLE>(handle_), INFINITE);
}

DirectoryLock::~DirectoryLock() {
  if (handle_ == 0) return;
  ::ReleaseMutex(reinterpret_cast<HANDLE>(handle_));
  ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

std::error_code CheckRegular(const std::string& path) {
  const Handle file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  BY_HANDLE_FILE_INFORMATION information{};
  if (!file.is_open()) return LastError();
  if (::GetFileType(file.get()) == FILE_TYPE_DISK &&
      ::GetFileInformationByHandle(file.get(), &information) != 0 &&
      (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
    return {};
  }
  return std::make_error_code(std::errc::invalid_argument);
}

std::error_code CheckWritable(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(WideName(path).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    return std::make_error_code(std::errc::permission_denied);  // a move wouldn't ask
  }
  return Checked(Handle(path, GENERIC_WRITE).is_open());
}

// The rights are those that the directory gives on; PutInPlace takes over the target's.
std::error_code CreateUnique(const std::string& prefix, std::string* path, bool) {
  for (;;) {
    const std::string name = prefix + UniqueLetters(::GetCurrentProcessId(), ::GetTickCount64());
    Handle file(name, GENERIC_WRITE, CREATE_NEW);
    const std::error_code error = Checked(file.is_open());
    if (error == std::errc::file_exists) continue;
    if (!error) *path = name;
    return error;
  }
}

std::error_code WriteFile(const std::string& path, std::string_view bytes) {
  constexpr std::size_t LargestTransfer = 1 << 30;
  Handle file(path, GENERIC_WRITE, TRUNCATE_EXISTING);
  if (!file.is_open()) return LastError();
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), LargestTransfer));
    if (::WriteFile(file.get(), bytes.data(), wanted, &written, nullptr) == 0) return LastError();
    bytes.remove_prefix(written);
  }
  return Checked(file.Close());
}

// The system's own call for this, ReplaceFileW, leaves a moment in which there is no file, and a
// process can end in it. A move has no such moment.
std::error_code PutInPlace(const std::string& copy, const std::string& target) {
  Handle file(copy, GENERIC_WRITE);
  if (!file.is_open() || ::FlushFileBuffers(file.get()) == 0 || !file.Close()) return LastError();
  const std::wstring from = WideName(copy);
  const std::wstring to = WideName(target);
  const DWORD attributes = ::GetFileAttributesW(to.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && !KeepRights(target, copy)) return LastError();
  // Others may have the file open for a moment: a reader, a guard against viruses.
  constexpr int MostAttempts = 40;
  constexpr DWORD Pause = 25;  // in milliseconds
  constexpr DWORD How = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  for (int attempt = 1; ::MoveFileExW(from.c_str(), to.c_str(), How) == 0; attempt++) {
    const DWORD error = ::GetLastError();
    const bool in_use = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!in_use || attempt == MostAttempts) return LastError();
    ::Sleep(Pause);
  }
  // Last, since a copy with these might not be there to be removed.
  if (attributes != INVALID_FILE_ATTRIBUTES) ::SetFileAttributesW(to.c_str(), attributes);
  return {};
}

void RemoveFile(const std::string& path) { ::DeleteFileW(WideName(path).c_str()); }

}  // namespace confgrove::Platform
