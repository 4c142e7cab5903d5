// Structs that describe themselves, and lists of them, read.
#ifndef CONFGROVE_VALUES_STRUCTS_H
#define CONFGROVE_VALUES_STRUCTS_H

#include <confgrove/section.h>
#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>
#include <confgrove/values/reader.h>
#include <confgrove/values/rules.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// A struct is described by a function template in its namespace, which names each member once, with
// its rules and what it is for. A member's initial value is its default.
//
//   template <typename Fields> void Describe(Fields& fields, Upstream& u) {
//     fields("host", u.host, confgrove::Required(), "Name or address of the machine.");
//     fields("port", u.port, confgrove::InRange(1, 65535), "TCP port.");
//   }
namespace confgrove::detail {

struct AnyFields {
  template <typename... Arguments>
  void operator()(Arguments&&... arguments);
};

template <typename T, typename = void>
constexpr bool IsDescribed = false;
template <typename T>
constexpr bool IsDescribed<
    T, std::void_t<decltype(Describe(std::declval<AnyFields&>(), std::declval<T&>()))>> = true;

// std::map with names for keys, or one like it.
template <typename T, typename = void>
constexpr bool IsMap = false;
template <typename T>
constexpr bool IsMap<T, std::void_t<typename T::key_type, typename T::mapped_type>> =
    std::is_same_v<typename T::key_type, std::string>;

// std::vector of what is no number.
template <typename T>
constexpr bool IsList = false;
template <typename T>
constexpr bool IsList<std::vector<T>> = IsDescribed<T> || IsMap<T>;

template <typename T>
std::string BlockPhrase() {
  static_assert(IsDescribed<T> || IsMap<T> || IsList<T>,
                "no type for a setting: see Reader for those that are");
  if constexpr (IsMap<T>) return Kind<typename T::mapped_type>::known ? "values by name" : "blocks";
  return IsDescribed<T> ? "a block" : "blocks";
}

class ReadFields {
 public:
  explicit ReadFields(Reader* reader) : reader_(*reader) {}

  template <typename Member, typename... Rules>
  void operator()(const char* name, Member& member, Rules... rules) {
    reader_.ReadInto(name, &member, Requires<Rules...>, rules...);
  }

 private:
  Reader& reader_;
};

}  // namespace confgrove::detail

namespace confgrove {
inline namespace values {

template <typename T>
void Reader::Read(T& value) {
  static_assert(detail::IsDescribed<T>, "no Describe(fields, value) is in the namespace of T");
  detail::ReadFields fields(this);
  Describe(fields, value);
}

template <typename T, typename... Rules>
bool Reader::ReadBlocks(const char* path, T* out, bool required, const Rules&... rules) {
  const auto wanted = [&rules...] { return detail::BlockPhrase<T>() + detail::PhraseOf(rules...); };
  Section* const section = FindAny(path);
  if (section == nullptr && required) {
    state_->Miss(detail::Join(path_, path));
    AddWrong(FaultKind::Missing, path, detail::Found(), wanted());
    return false;
  }
  Reader block = Block(path);
  if (section != nullptr && !CheckBlock(path, block)) return false;
  std::string found = "this";
  if constexpr (detail::IsDescribed<T>) {
    block.Read(*out);  // of a missing block too: what it requires is missing
  } else {
    if (section == nullptr) return false;
    out->clear();
    for (std::string& name : block.Names()) {
      if constexpr (detail::IsMap<T>) {
        typename T::mapped_type value{};
        block.ReadInto(name.c_str(), &value, true);
        out->emplace(std::move(name), std::move(value));
      } else {
        out->emplace_back();
        block.ReadInto(name.c_str(), &out->back(), true);
      }
    }
    found = std::to_string(out->size());
  }
  const FaultKind fault = detail::JudgeAll(*out, rules...);
  Fault* const added = fault != FaultKind::None ? AddFault(fault, path, section) : nullptr;
  if (added != nullptr) {
    added->wanted = wanted();
    added->found = found;
  }
  return section != nullptr && fault == FaultKind::None;
}

// Reads a described struct from a section: a configuration, or a block. What is wrong comes back
// with places, settings that nobody asked for as warnings, or as `unread` says.
template <typename T>
[[nodiscard]] std::vector<Fault> Read(Section& section, T& value,
                                      Severity unread = Severity::Warning) {
  Reader reader(section);
  reader.Read(value);
  std::vector<Fault> faults = reader.Faults();
  for (Fault& fault : reader.Unread(unread)) faults.push_back(std::move(fault));
  return faults;
}

}  // namespace values
}  // namespace confgrove

#endif
