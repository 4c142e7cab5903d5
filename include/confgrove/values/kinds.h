// The types that a setting can have in C++, and what each is in a file.
#ifndef CONFGROVE_VALUES_KINDS_H
#define CONFGROVE_VALUES_KINDS_H

#include <confgrove/inspect.h>
#include <confgrove/values/fault.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace confgrove {
inline namespace values {

// An enumerator and its name in files. Of an enumeration that is to be read, a function NamesOf in
// its namespace gives all of them:
//
//   constexpr confgrove::Named<Mode> ModeNames[] = {{"fast", Mode::Fast}, {"safe", Mode::Safe}};
//   constexpr auto& NamesOf(Mode) { return ModeNames; }
template <typename Enum>
struct Named {
  constexpr Named(const char* its_name, Enum its_value)
      : name(its_name), number(static_cast<std::int64_t>(its_value)) {}
  constexpr Enum value() const { return static_cast<Enum>(number); }

  const char* name;  // not copied
  std::int64_t number;
};

}  // namespace values
}  // namespace confgrove

namespace confgrove::detail {

// Doubles tell whole numbers apart up to here.
constexpr double LargestWhole = 9007199254740991;

constexpr bool Same(double a, double b) { return a <= b && a >= b; }

constexpr bool IsFinite(double number) {
  return number >= std::numeric_limits<double>::lowest() &&
         number <= std::numeric_limits<double>::max();
}

// The shortest text that reads back as the same number, whatever the language of the system; of a
// whole number without an exponent.
CONFGROVE_COLD inline std::string NumberText(double number) {
  char buffer[32];
  char* const end = buffer + sizeof buffer;
  if (number >= -LargestWhole && number <= LargestWhole) {
    const auto whole = static_cast<std::int64_t>(number);
    if (Same(static_cast<double>(whole), number)) {
      return {buffer, std::to_chars(buffer, end, whole).ptr};
    }
  }
  return {buffer, std::to_chars(buffer, end, number).ptr};
}

// For a message: no control bytes, and not too long.
CONFGROVE_COLD inline std::string Quoted(std::string_view text) {
  constexpr std::size_t longest = 60;
  std::string quoted = "\"";
  for (const char c : text.substr(0, longest)) {
    const bool is_control = (c >= 0 && c < 0x20) || c == 0x7F;
    quoted += is_control ? '?' : c;
  }
  return quoted + (text.size() > longest ? "...\"" : "\"");
}

// What a type is. Of a described struct, and of lists of such, Kind is in blocks.h.
template <typename T, typename = void>
struct NumberKind {
  static constexpr bool known = false;
};
template <typename T, typename = void>
struct Kind {
  static constexpr bool known = false;
};

// --- Numbers

template <typename T>
struct NumberKind<T, std::enable_if_t<std::is_arithmetic_v<T>>> {
  static constexpr bool known = true;

  static constexpr double Lowest() {
    const auto lowest = static_cast<double>(std::numeric_limits<T>::lowest());
    return std::is_integral_v<T> && lowest < -LargestWhole ? -LargestWhole : lowest;
  }
  static constexpr double Highest() {
    const auto highest = static_cast<double>(std::numeric_limits<T>::max());
    return std::is_integral_v<T> && highest > LargestWhole ? LargestWhole : highest;
  }

  // In `*out`, which is untouched if the number doesn't fit.
  static FaultKind From(double number, T* out) {
    if (!(number >= Lowest() && number <= Highest())) return FaultKind::OutOfRange;
    const T converted = static_cast<T>(number);
    if constexpr (std::is_integral_v<T>) {
      if (!Same(static_cast<double>(converted), number)) return FaultKind::NotWhole;
    }
    *out = converted;
    return FaultKind::None;
  }

  static constexpr double Plain(T value) { return static_cast<double>(value); }

  // The number that a file holds: of a float the one with the fewest digits.
  static double ForFile(T value) {
    if constexpr (std::is_same_v<T, float>) {
      char buffer[32];
      auto number = static_cast<double>(value);
      std::from_chars(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr, number);
      return number;
    } else {
      return static_cast<double>(value);
    }
  }

  static std::string Phrase() {
    if (std::is_same_v<T, bool>) return "0 or 1";
    return std::is_integral<T>::value ? "a whole number" : "a number";
  }
  static std::string PluralPhrase() {
    return std::is_integral<T>::value ? "whole numbers" : "numbers";
  }
  static std::string Limits() {
    if (std::is_same_v<T, bool>) return "";
    return " from " + NumberText(Lowest()) + " to " + NumberText(Highest());
  }
};

template <>
inline FaultKind NumberKind<bool>::From(double number, bool* out) {
  if (!Same(number, 0) && !Same(number, 1)) return FaultKind::OutOfRange;
  *out = number > 0;
  return FaultKind::None;
}

// std::chrono durations, by their members.
template <typename T>
struct NumberKind<T, std::void_t<typename T::rep, typename T::period,
                                 decltype(std::declval<const T&>().count())>> {
  using Count = NumberKind<typename T::rep>;
  static constexpr bool known = true;

  static FaultKind From(double number, T* out) {
    typename T::rep count{};
    const FaultKind fault = Count::From(number, &count);
    if (fault == FaultKind::None) *out = T(count);
    return fault;
  }

  static constexpr double Plain(T value) { return Count::Plain(value.count()); }
  static double ForFile(T value) { return Count::ForFile(value.count()); }
  static std::string Phrase() { return Count::Phrase() + " of " + Unit(); }
  static std::string PluralPhrase() { return Count::PluralPhrase() + " of " + Unit(); }
  static std::string Limits() { return Count::Limits(); }

  static std::string Unit() {
    constexpr std::intmax_t up = T::period::num;
    constexpr std::intmax_t down = T::period::den;
    if (up == 1 && down == 1000000000) return "nanoseconds";
    if (up == 1 && down == 1000000) return "microseconds";
    if (up == 1 && down == 1000) return "milliseconds";
    if (up == 1 && down == 1) return "seconds";
    if (up == 60 && down == 1) return "minutes";
    if (up == 3600 && down == 1) return "hours";
    if (up == 86400 && down == 1) return "days";
    return std::to_string(up) + "/" + std::to_string(down) + " seconds";
  }
};

// What all kinds of values have in common: `Take` reads a value that is no link;
// `Limits` is what the type alone forbids, as it follows on `Phrase`.
template <typename T>
struct Kind<T, std::enable_if_t<NumberKind<T>::known>> : NumberKind<T> {
  static FaultKind Take(const ValueView& value, T* out) {
    if (value.count == 1) return NumberKind<T>::From(*value.numbers, out);
    return value.count > 1 ? FaultKind::WrongLength : FaultKind::WrongKind;
  }

  static std::string FileText(const T& value) { return NumberText(NumberKind<T>::ForFile(value)); }
};

// --- Arrays of numbers

template <typename T>
constexpr bool IsArray = false;
template <typename T>
constexpr bool IsArray<std::vector<T>> = NumberKind<T>::known;
template <typename T, std::size_t size>
constexpr bool IsArray<std::array<T, size>> = NumberKind<T>::known;

template <typename T>
struct ArrayKind {
  using Element = typename T::value_type;
  using Elements = NumberKind<Element>;
  static constexpr bool known = true;

  static std::string FileText(const T& value) {
    std::string text;
    for (const Element& element : value) {
      text += (text.empty() ? "[" : ", ") + NumberText(Elements::ForFile(element));
    }
    return text + (text.empty() ? "[]" : "]");
  }
  static std::string Limits() { return Elements::Limits(); }
};

template <typename E>
struct Kind<std::vector<E>, std::enable_if_t<NumberKind<E>::known>> : ArrayKind<std::vector<E>> {
  static FaultKind Take(const ValueView& value, std::vector<E>* out) {
    if (value.count == 0) return FaultKind::WrongKind;
    std::vector<E> made;
    made.reserve(static_cast<std::size_t>(value.count));
    for (std::int32_t i = 0; i < value.count; ++i) {
      E element{};
      const FaultKind fault = NumberKind<E>::From(value.numbers[i], &element);
      if (fault != FaultKind::None) return fault;
      made.push_back(element);
    }
    *out = std::move(made);
    return FaultKind::None;
  }

  static std::string Phrase() { return NumberKind<E>::PluralPhrase(); }
};

template <typename E, std::size_t size>
struct Kind<std::array<E, size>, std::enable_if_t<NumberKind<E>::known>>
    : ArrayKind<std::array<E, size>> {
  static FaultKind Take(const ValueView& value, std::array<E, size>* out) {
    std::vector<E> elements;
    const FaultKind fault = Kind<std::vector<E>>::Take(value, &elements);
    if (fault != FaultKind::None) return fault;
    if (elements.size() != size) return FaultKind::WrongLength;
    for (std::size_t i = 0; i < size; ++i) (*out)[i] = elements[i];
    return FaultKind::None;
  }

  static std::string Phrase() { return std::to_string(size) + ' ' + NumberKind<E>::PluralPhrase(); }
};

// --- Texts

// std::filesystem::path, by its members.
template <typename T, typename = void>
constexpr bool IsPath = false;
template <typename T>
constexpr bool IsPath<T, std::void_t<typename T::string_type, decltype(T::preferred_separator),
                                     decltype(std::declval<const T&>().string())>> = true;

template <typename T>
constexpr bool IsText =
    std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view> || IsPath<T>;

template <typename T>
struct Kind<T, std::enable_if_t<IsText<T>>> {
  static constexpr bool known = true;

  static FaultKind Take(const ValueView& value, T* out) {
    if (value.text == nullptr) return FaultKind::WrongKind;
    *out = T(value.text);
    return FaultKind::None;
  }

  static std::string Text(const T& value) {
    if constexpr (IsPath<T>) {
      return value.string();
    } else {
      return std::string(value);
    }
  }
  static std::string FileText(const T& value) { return '"' + Text(value) + '"'; }
  static std::string Phrase() { return "a text"; }
  static std::string Limits() { return ""; }
};

// --- Enumerations

template <typename T>
struct Kind<T, std::void_t<std::enable_if_t<std::is_enum_v<T>>, decltype(NamesOf(T()))>> {
  static constexpr bool known = true;

  static FaultKind Take(const ValueView& value, T* out) {
    if (value.text == nullptr) return FaultKind::WrongKind;
    for (const auto& named : NamesOf(T())) {
      if (std::string_view(named.name) != value.text) continue;
      *out = named.value();
      return FaultKind::None;
    }
    return FaultKind::UnknownName;
  }

  // "" for a value without a name.
  static std::string Text(T value) {
    for (const auto& named : NamesOf(T())) {
      if (named.value() == value) return named.name;
    }
    return "";
  }
  static std::string FileText(T value) { return '"' + Text(value) + '"'; }

  static std::string Phrase() {
    std::string all;
    std::string last;
    for (const auto& named : NamesOf(T())) {
      if (!last.empty()) all += (all.empty() ? "" : ", ") + last;
      last = Quoted(named.name);
    }
    return all + (all.empty() ? "" : " or ") + last;
  }
  static std::string Limits() { return ""; }
};

template <typename T>
constexpr bool IsOptional = false;
template <typename T>
constexpr bool IsOptional<std::optional<T>> = true;

}  // namespace confgrove::detail

#endif
