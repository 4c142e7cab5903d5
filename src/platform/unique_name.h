// Names that no other file has.
#ifndef CONFGROVE_PLATFORM_UNIQUE_NAME_H
#define CONFGROVE_PLATFORM_UNIQUE_NAME_H

#include <atomic>
#include <cstdint>
#include <string>

namespace confgrove::Platform {

// Six letters, others at each call. `process` and `time` are what makes them differ from those of
// other processes; whether they do is seen when the file is made.
inline std::string UniqueLetters(std::uint64_t process, std::uint64_t time) {
  static std::atomic<std::uint64_t> calls{0};
  constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
  constexpr std::uint64_t Count = sizeof Letters - 1;
  std::uint64_t rest = process * 1'000'003 + time + calls++;
  std::string letters;
  for (int i = 0; i < 6; i++, rest /= Count) letters += Letters[rest % Count];
  return letters;
}

}  // namespace confgrove::Platform

#endif
