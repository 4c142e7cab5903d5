// Set: typed values into a tree.
#ifndef CONFGROVE_VALUES_SET_H
#define CONFGROVE_VALUES_SET_H

#include <confgrove/inspect.h>
#include <confgrove/section.h>
#include <confgrove/values/kinds.h>
#include <confgrove/values/reader.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace confgrove {
inline namespace values {

// Whether a value was set, and if not, why.
struct [[nodiscard]] SetResult {
  explicit operator bool() const { return reason.empty(); }
  std::string reason{};  // in plain words
};

}  // namespace values
}  // namespace confgrove

namespace confgrove::detail {

constexpr bool IsNameByte(char c, bool is_first) {
  const auto byte = static_cast<unsigned char>(c);
  const bool is_digit = c >= '0' && c <= '9';
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || (is_digit && !is_first) ||
         (byte >= 0xC0 && byte != 0xC9 && byte != 0xE9) || byte == 0xA8 || byte == 0xB8;
}

// Whether a file can hold a section of that name.
inline bool IsName(std::string_view name) {
  bool sound = !name.empty();
  for (std::size_t i = 0; i < name.size(); ++i) sound = sound && IsNameByte(name[i], i == 0);
  return sound;
}

// Why nothing can be set at `path`; "" if it can.
inline std::string PathRefusal(Section* section, std::string_view path) {
  constexpr std::ptrdiff_t deepest = 1000;
  const std::string whole = Join(PathOf(section), path);
  if (whole.empty()) return "the top of a file holds no value";
  for (std::string_view rest = path; !rest.empty();) {
    const std::size_t dot = rest.find('.');
    if (!IsName(rest.substr(0, dot)) || dot == rest.size() - 1) {
      return "no file can hold the name " + Quoted(path);
    }
    rest.remove_prefix(dot == std::string_view::npos ? rest.size() : dot + 1);
  }
  if (std::count(whole.begin(), whole.end(), '.') >= deepest) {
    return "sections can't be nested deeper than 1000";
  }
  return "";
}

inline std::string NumberRefusal(double number, bool is_whole) {
  if (!IsFinite(number)) return "a file can hold finite numbers alone";
  if (is_whole && !(number >= -LargestWhole && number <= LargestWhole)) {
    return "a file can't hold whole numbers beyond 9007199254740991";
  }
  return "";
}

inline std::string SetNumbers(Section* section, const char* path,
                              const std::vector<double>& numbers, bool are_whole) {
  if (numbers.empty()) return "a file can't hold an empty array";
  for (const double number : numbers) {
    std::string refusal = NumberRefusal(number, are_whole);
    if (!refusal.empty()) return refusal;
  }
  const auto count = static_cast<std::int32_t>(numbers.size());
  return section->SetDoubles(numbers.data(), count, path) ? "" : "the section is read-only";
}

inline std::string SetText(Section* section, const char* path, const std::string& text) {
  if (text.find_first_of(std::string_view("\"\r\n\0", 4)) != std::string::npos) {
    return "a text in a file can't hold a quote, a line end or a NUL byte";
  }
  return section->SetString(text.c_str(), path) ? "" : "the section is read-only";
}

template <typename T>
constexpr bool IsWhole = [] {
  if constexpr (std::is_arithmetic_v<T>) {
    return std::is_integral_v<T>;
  } else {
    return std::is_integral_v<typename T::rep>;
  }
}();

template <typename T>
std::string SetValue(Section* section, const char* path, const T& value) {
  if constexpr (NumberKind<T>::known) {
    return SetNumbers(section, path, {NumberKind<T>::ForFile(value)}, IsWhole<T>);
  } else if constexpr (IsArray<T>) {
    using Element = typename T::value_type;
    std::vector<double> numbers;
    for (const Element& element : value) numbers.push_back(NumberKind<Element>::ForFile(element));
    return SetNumbers(section, path, numbers, IsWhole<Element>);
  } else if constexpr (std::is_enum_v<T>) {
    const std::string name = Kind<T>::Text(value);
    return name.empty() ? "the value has no name" : SetText(section, path, name);
  } else if constexpr (std::is_convertible_v<const T&, const char*>) {
    return SetText(section, path, value);
  } else {
    static_assert(IsText<T>, "no type for a value: see Reader for those that are");
    return SetText(section, path, Kind<T>::Text(value));
  }
}

}  // namespace confgrove::detail

namespace confgrove {
inline namespace values {

// Gives the section at `path` a value of any type that a Reader reads as one value, making what is
// missing on the way. Nothing changes if it is refused: for a path that is none, and for a value
// that a file can't hold.
template <typename T>
SetResult Set(Section& section, PathText path, const T& value) {
  std::string refusal = detail::PathRefusal(&section, path.get());
  if (refusal.empty()) refusal = detail::SetValue(&section, path.get(), value);
  return {std::move(refusal)};
}

}  // namespace values
}  // namespace confgrove

#endif
