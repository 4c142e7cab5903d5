// The rules that a setting can have beyond its type.
#ifndef CONFGROVE_VALUES_RULES_H
#define CONFGROVE_VALUES_RULES_H

#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>

#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

// A rule has Accepts(value), and Phrase(), which goes on from words like "a whole number". `kind`
// is what a value is guilty of that it doesn't accept. A plain text among rules describes the
// setting to people: Sample and Reference show it.
namespace confgrove {
inline namespace values {

// A number, or each one of an array, within bounds, which it may equal. Of a duration it is the
// number in the unit of its type.
struct NumberRange {
  static constexpr FaultKind kind = FaultKind::OutOfRange;

  template <typename T>
  bool Accepts(const T& value) const {
    if constexpr (detail::NumberKind<T>::known) {
      const double number = detail::NumberKind<T>::Plain(value);
      return number >= lowest && number <= highest;
    } else {
      static_assert(detail::IsArray<T>, "a range is for numbers");
      for (const auto& element : value) {
        if (!Accepts(element)) return false;
      }
      return true;
    }
  }

  CONFGROVE_COLD std::string Phrase() const {
    const bool has_lowest = detail::IsFinite(lowest);
    const bool has_highest = detail::IsFinite(highest);
    if (has_lowest && has_highest) {
      return detail::Glue(
          {" from ", detail::NumberText(lowest), " to ", detail::NumberText(highest)});
    }
    return detail::Glue({", ", detail::NumberText(has_lowest ? lowest : highest),
                         has_lowest ? " or more" : " or less"});
  }

  double lowest, highest;  // infinite: no bound
};

constexpr NumberRange InRange(double lowest, double highest) { return {lowest, highest}; }
constexpr NumberRange AtLeast(double lowest) {
  return {lowest, std::numeric_limits<double>::infinity()};
}
constexpr NumberRange AtMost(double highest) {
  return {-std::numeric_limits<double>::infinity(), highest};
}

// How many numbers an array has, how many entries a list of blocks, how many bytes a text.
struct Length {
  static constexpr FaultKind kind = FaultKind::WrongLength;

  constexpr explicit Length(std::size_t exactly) : least(exactly), most(exactly) {}
  constexpr Length(std::size_t at_least, std::size_t at_most) : least(at_least), most(at_most) {}

  template <typename T>
  bool Accepts(const T& value) const {
    return value.size() >= least && value.size() <= most;
  }

  CONFGROVE_COLD std::string Phrase() const {
    return ", length " + std::to_string(least) +
           (least == most ? "" : " to " + std::to_string(most));
  }

  std::size_t least, most;
};

// A text that isn't "", or a list of blocks that has any.
struct NotEmpty {
  static constexpr FaultKind kind = FaultKind::WrongLength;

  template <typename T>
  bool Accepts(const T& value) const {
    return !value.empty();
  }

  std::string Phrase() const { return ", not empty"; }
};

// One of some texts or numbers, which are not copied.
template <typename Value, std::size_t count>
struct Choice {
  static constexpr FaultKind kind = FaultKind::UnknownName;

  template <typename T>
  bool Accepts(const T& value) const {
    for (const Value& allowed : values) {
      if constexpr (detail::NumberKind<T>::known) {
        if (detail::Same(detail::NumberKind<T>::Plain(value), static_cast<double>(allowed))) {
          return true;
        }
      } else if (value == allowed) {
        return true;
      }
    }
    return false;
  }

  CONFGROVE_COLD std::string Phrase() const {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) all += i + 1 < count ? ", " : " or ";
      all += Text(values[i]);
    }
    return ", " + all;
  }

  static std::string Text(std::string_view value) { return detail::Quoted(value); }
  static std::string Text(double value) { return detail::NumberText(value); }

  std::array<Value, count> values;
};

template <typename... Texts>
constexpr Choice<const char*, sizeof...(Texts) + 1> OneOf(const char* first, Texts... others) {
  return {{first, others...}};
}
template <typename... Numbers>
constexpr Choice<double, sizeof...(Numbers) + 1> OneOf(double first, Numbers... others) {
  return {{first, static_cast<double>(others)...}};
}

// Whatever a test of the host's own accepts, a function of the value that gives true or false.
// `words` goes on from "wanted a whole number, ".
template <typename Test>
struct Must : private Test {  // a base, since as a member an empty test would take room
  static constexpr FaultKind kind = FaultKind::Refused;

  constexpr Must(Test test, const char* what_it_wants) : Test(test), words(what_it_wants) {}

  template <typename T>
  bool Accepts(const T& value) const {
    return static_cast<const Test&>(*this)(value);
  }

  std::string Phrase() const { return detail::Glue({", ", words}); }

  const char* words;
};
template <typename Test>
Must(Test, const char*) -> Must<Test>;

// In a description: it has no default.
struct Required {};

// The setting once had this name and is still found by it, with a warning.
struct WasNamed {
  constexpr explicit WasNamed(const char* old_name) : name(old_name) {}
  const char* name;
};

}  // namespace values
}  // namespace confgrove

namespace confgrove::detail {

template <typename Rule>
constexpr bool IsNote = std::is_same_v<Rule, Required> || std::is_same_v<Rule, WasNamed> ||
                        std::is_same_v<Rule, const char*>;

template <typename... Rules>
constexpr bool Requires = (std::is_same_v<Rules, Required> || ...);

template <typename... Rules>
constexpr bool WasRenamed = (std::is_same_v<Rules, WasNamed> || ...);

// Of one rule, and what it is if it is another one.
template <typename Rule>
const char* OldName(const Rule& rule) {
  if constexpr (std::is_same_v<Rule, WasNamed>) {
    return rule.name;
  } else {
    static_cast<void>(rule);
    return nullptr;
  }
}

template <typename Rule>
const char* Words(const Rule& rule) {
  if constexpr (std::is_same_v<Rule, const char*>) {
    return rule;
  } else {
    static_cast<void>(rule);
    return "";
  }
}

// What the rules want, as it goes on from the words for a type.
template <typename... Rules>
CONFGROVE_COLD std::string PhraseOf(const Rules&... rules) {
  std::string phrase;
  const auto add = [&phrase](const auto& rule) {
    if constexpr (!IsNote<std::decay_t<decltype(rule)>>) phrase += rule.Phrase();
  };
  (add(rules), ...);
  static_cast<void>(add);
  return phrase;
}

// What a value is guilty of against one rule.
template <typename Rule, typename T>
FaultKind Judge(const Rule& rule, const T& value) {
  if constexpr (IsNote<Rule>) {
    static_cast<void>(rule);
    static_cast<void>(value);
    return FaultKind::None;
  } else {
    return rule.Accepts(value) ? FaultKind::None : Rule::kind;
  }
}

// The first thing that it is guilty of.
template <typename T, typename... Rules>
FaultKind JudgeAll(const T& value, const Rules&... rules) {
  FaultKind fault = FaultKind::None;
  static_cast<void>(value);
  ((fault = fault == FaultKind::None ? Judge(rules, value) : fault), ...);
  return fault;
}

}  // namespace confgrove::detail

#endif
