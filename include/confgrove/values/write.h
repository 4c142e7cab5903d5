// Write: described structs into a tree.
#ifndef CONFGROVE_VALUES_WRITE_H
#define CONFGROVE_VALUES_WRITE_H

#include <confgrove/inspect.h>
#include <confgrove/section.h>
#include <confgrove/values/fault.h>
#include <confgrove/values/kinds.h>
#include <confgrove/values/reader.h>
#include <confgrove/values/rules.h>
#include <confgrove/values/set.h>
#include <confgrove/values/structs.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace confgrove::detail {

// Its address stands for the type.
template <typename T>
inline const char TypeTag = 0;

// The members of an object by name.
class MemberList {
 public:
  template <typename Member, typename... Rules>
  void operator()(const char* name, Member& member, Rules... /*rules*/) {
    entries_.push_back({name, &TypeTag<Member>, &member});
  }

  // Null if there is none.
  template <typename Member>
  const Member* Find(std::string_view name) const {
    for (const Entry& entry : entries_) {
      if (entry.type == &TypeTag<Member> && name == entry.name) {
        return static_cast<const Member*>(entry.member);
      }
    }
    return nullptr;
  }

 private:
  struct Entry {
    const char* name;
    const char* type;
    const void* member;
  };
  std::vector<Entry> entries_{};
};

template <typename T>
bool IsEqual(const T& a, const T& b) {
  if constexpr (std::is_floating_point_v<T>) {
    return Same(static_cast<double>(a), static_cast<double>(b));
  } else {
    return a == b;
  }
}

class Writer {
 public:
  explicit Writer(Section* section) : section_(*section) {}

  // `initial` is what a reader takes for what isn't there; null: all is to be written.
  template <typename T>
  void WriteBlock(const std::string& path, const T& value, const T* initial);
  template <typename T>
  void WriteMember(const std::string& path, const T& value, const T* initial);

  std::vector<Fault> faults{};

 private:
  template <typename T>
  void WriteEntries(const std::string& path, const T& entries);

  bool Has(const std::string& path) { return FindSection(&section_, path.c_str()) != nullptr; }

  void Remove(const std::string& path) {
    Section* const found = FindSection(&section_, path.c_str());
    if (found == nullptr) return;
    if (ConfigOf(found) != ConfigOf(&section_)) {
      AddRefusal(path, "an imported file has it, from which nothing can be removed");
    } else if (!section_.RemoveSection(path.c_str())) {
      AddRefusal(path, "the section is read-only");
    }
  }

  void AddRefusal(const std::string& path, std::string reason) {
    Fault fault;
    fault.kind = FaultKind::Refused;
    fault.path = Join(PathOf(&section_), path);
    fault.note = std::move(reason);
    fault.place.file = OwnFile(ConfigOf(&section_));
    faults.push_back(std::move(fault));
  }

  Section& section_;
};

class WriteFields {
 public:
  WriteFields(Writer* writer, const std::string& path, const MemberList* initial)
      : writer_(*writer), path_(path), initial_(initial) {}

  template <typename Member, typename... Rules>
  void operator()(const char* name, Member& member, Rules... /*rules*/) {
    const bool takes_initial = initial_ != nullptr && !Requires<Rules...>;
    const Member* const initial = takes_initial ? initial_->Find<Member>(name) : nullptr;
    writer_.WriteMember<Member>(Join(path_, name), member, initial);
  }

 private:
  Writer& writer_;
  const std::string& path_;
  const MemberList* initial_;
};

template <typename T>
void Writer::WriteBlock(const std::string& path, const T& value, const T* initial) {
  MemberList members;
  // A description only looks at the members that it is given, but takes them as it would to read.
  if (initial != nullptr) Describe(members, const_cast<T&>(*initial));
  WriteFields fields(this, path, initial != nullptr ? &members : nullptr);
  Describe(fields, const_cast<T&>(value));
}

template <typename T>
void Writer::WriteMember(const std::string& path, const T& value, const T* initial) {
  if constexpr (IsOptional<T>) {
    using Value = typename T::value_type;
    if (!value.has_value()) {
      Remove(path);
    } else {
      const Value fresh{};
      WriteMember<Value>(path, *value, !Kind<Value>::known && Has(path) ? &fresh : nullptr);
    }
  } else if constexpr (Kind<T>::known) {
    T current{};
    Reader reader(section_);
    const bool is_there = reader.ReadInto(path.c_str(), &current, false);
    if (is_there) {
      if (IsEqual(current, value)) return;
    } else if (initial != nullptr && IsEqual(*initial, value) && !Has(path)) {
      return;
    }
    SetResult result = Set(section_, path, value);
    if (!result) AddRefusal(path, std::move(result.reason));
  } else if constexpr (IsDescribed<T>) {
    WriteBlock(path, value, initial);
  } else {
    static_assert(IsMap<T> || IsList<T>, "no type for a setting: see Reader for those that are");
    WriteEntries(path, value);
  }
}

// Blocks that are new get all their settings, so that they are there at all.
template <typename T>
void Writer::WriteEntries(const std::string& path, const T& entries) {
  std::vector<std::string> names = Reader(section_).Block(path).Names();
  const auto write = [this, &path](const std::string& name, const auto& value) {
    using Value = std::decay_t<decltype(value)>;
    if (!IsName(name)) {
      AddRefusal(path, "no file can hold the name " + Quoted(name));
      return;
    }
    const Value fresh{};
    const std::string whole = Join(path, name);
    WriteMember<Value>(whole, value, Has(whole) ? &fresh : nullptr);
  };
  if constexpr (IsMap<T>) {
    for (const auto& [name, value] : entries) {
      write(name, value);
      names.erase(std::remove(names.begin(), names.end(), name), names.end());
    }
  } else {
    std::size_t next = 0;
    for (const auto& value : entries) {
      std::string name = path.substr(path.rfind('.') + 1) + std::to_string(next + 1);
      if (next < names.size()) name = names[next];
      while (next >= names.size() && Has(Join(path, name))) name += '_';
      write(name, value);
      ++next;
    }
    names.erase(names.begin(),
                names.begin() + static_cast<std::ptrdiff_t>(std::min(next, names.size())));
  }
  for (const std::string& name : names) Remove(Join(path, name));
}

}  // namespace confgrove::detail

namespace confgrove {
inline namespace values {

// Brings the section to what a described struct says: sets what a Reader would read otherwise, and
// removes what lists and optional members no longer have. Settings that aren't there and have their
// defaults are left out, links that give the wanted value stay. What was refused comes back, with a
// reason each. SaveInPlace then writes what has changed.
template <typename T>
[[nodiscard]] std::vector<Fault> Write(Section& section, const T& value) {
  detail::Writer writer(&section);
  const T initial{};
  writer.WriteBlock(std::string(), value, &initial);
  return std::move(writer.faults);
}

}  // namespace values
}  // namespace confgrove

#endif
