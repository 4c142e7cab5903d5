// Sample and Reference: what a described struct says to people.
#ifndef CONFGROVE_VALUES_DOCUMENT_H
#define CONFGROVE_VALUES_DOCUMENT_H

#include <confgrove/values/kinds.h>
#include <confgrove/values/rules.h>
#include <confgrove/values/structs.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace confgrove::detail {

// Of a rule or rules as they go on from the words for a type, without what joins them.
inline std::string Alone(std::string_view phrase) {
  const std::size_t begin = phrase.find_first_not_of(", ");
  return begin == std::string_view::npos ? std::string() : std::string(phrase.substr(begin));
}

template <typename T>
std::string KindPhrase() {
  if constexpr (IsOptional<T>) {
    return KindPhrase<typename T::value_type>();
  } else if constexpr (Kind<T>::known) {
    return Kind<T>::Phrase();
  } else {
    return BlockPhrase<T>();
  }
}

// --- Sample

// Text of the lines of a block. What is commented out stands first: in front of a '}' it would
// belong to nobody.
struct SampleBody {
  std::string commented{};
  std::string live{};
};

inline std::string Prefixed(std::string_view prefix, std::string_view lines) {
  std::string text;
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    text += std::string(end > 0 ? prefix : "") + std::string(lines.substr(0, end)) + '\n';
    lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
  }
  return text;
}

inline std::string InBraces(const std::string& name, const SampleBody& body) {
  std::string inner = body.commented;
  if (!inner.empty() && !body.live.empty()) inner += '\n';
  return name + "\n{\n" + Prefixed("\t", inner + body.live) + "}\n";
}

template <typename T>
SampleBody BodyOf(const T& value);

class SampleFields {
 public:
  template <typename Member, typename... Rules>
  void operator()(const char* name, Member& member, Rules... rules) {
    std::string words = (std::string() + ... + Words(rules));
    std::string phrase = KindPhrase<Member>() + PhraseOf(rules...);
    if (phrase.front() >= 'a' && phrase.front() <= 'z') {
      phrase.front() = static_cast<char>(phrase.front() - 'a' + 'A');
    }
    if (!words.empty()) words += words.back() == '.' ? " " : ". ";
    words += phrase + (Requires<Rules...> ? ". Required." : ".");
    Add(name, Prefixed("# ", words), member, Requires<Rules...>);
  }

  SampleBody body{};

 private:
  void Put(std::string* part, const std::string& text) {
    *part += (part->empty() ? "" : "\n") + text;
  }
  void PutCommented(const std::string& words, const std::string& text) {
    Put(&body.commented, words + Prefixed("# ", text));
  }

  template <typename Member>
  void Add(const std::string& name, const std::string& words, const Member& member,
           bool is_required = true) {
    if constexpr (IsOptional<Member>) {
      using Value = typename Member::value_type;
      if (member.has_value()) {
        Add(name, words, *member, is_required);
      } else {
        SampleFields one;
        one.Add(name, "", Value{});
        PutCommented(words, one.body.commented + one.body.live);
      }
    } else if constexpr (Kind<Member>::known) {
      const std::string line = name + " = " + Kind<Member>::FileText(member) + '\n';
      if constexpr (IsArray<Member>) {
        if (member.size() == 0) {  // a file can't hold it
          PutCommented(words, name + " = [0]\n");
          return;
        }
      }
      Put(&body.live, words + line);
    } else if constexpr (IsDescribed<Member>) {
      AddBody(name, words, BodyOf(member));
    } else {
      SampleBody inner = BodyOfEntries(name, member);
      const bool is_example = member.empty() && !is_required;
      AddBody(name, words, is_example ? SampleBody{inner.commented + inner.live, {}} : inner);
    }
  }

  void AddBody(const std::string& name, const std::string& words, const SampleBody& inner) {
    if (inner.live.empty()) {
      PutCommented(words, InBraces(name, inner));
    } else {
      Put(&body.live, words + InBraces(name, inner));
    }
  }

  // One entry of the kind if there is none by default, as an example.
  template <typename Entries>
  static SampleBody BodyOfEntries(const std::string& name, const Entries& entries) {
    SampleFields fields;
    if constexpr (IsMap<Entries>) {
      for (const auto& [key, value] : entries) fields.Add(key, "", value);
      if (entries.empty()) fields.Add("name", "", typename Entries::mapped_type{});
    } else {
      std::size_t count = 0;
      for (const auto& value : entries) fields.Add(name + std::to_string(++count), "", value);
      if (entries.empty()) fields.Add(name + '1', "", typename Entries::value_type{});
    }
    return std::move(fields.body);
  }
};

template <typename T>
SampleBody BodyOf(const T& value) {
  SampleFields fields;
  Describe(fields, const_cast<T&>(value));  // which only looks, as in Writer
  return std::move(fields.body);
}

// --- Reference

class ReferenceFields {
 public:
  explicit ReferenceFields(std::string path) : path_(std::move(path)) {}

  template <typename Member, typename... Rules>
  void operator()(const char* name, Member& member, Rules... rules) {
    const std::string path = Join(path_, name);
    const std::string initial = Requires<Rules...> ? "required" : Initial(member);
    rows += "| `" + path + "` | " + Cell(KindPhrase<Member>()) + " | " +
            Cell(Alone(PhraseOf(rules...))) + " | " + Cell(initial) + " | " +
            Cell((std::string() + ... + Words(rules))) + " |\n";
    AddBelow<Member>(path);
  }

  std::string rows{};

 private:
  static std::string Cell(const std::string& text) {
    std::string cell;
    for (const char c : text) {
      if (c == '|') cell += '\\';
      cell += c == '\n' ? ' ' : c;
    }
    return cell;
  }

  template <typename Member>
  static std::string Initial(const Member& member) {
    if constexpr (IsOptional<Member>) {
      if (member.has_value()) return Initial(*member);
      return "none";
    } else if constexpr (Kind<Member>::known) {
      if constexpr (IsArray<Member>) {
        if (member.size() == 0) return "none";
      }
      return '`' + Kind<Member>::FileText(member) + '`';
    } else {
      return "";
    }
  }

  template <typename Member>
  void AddBelow(const std::string& path) {
    if constexpr (IsOptional<Member>) {
      AddBelow<typename Member::value_type>(path);
    } else if constexpr (IsMap<Member>) {
      AddBelow<typename Member::mapped_type>(path + ".*");
    } else if constexpr (IsList<Member>) {
      AddBelow<typename Member::value_type>(path + ".*");
    } else if constexpr (IsDescribed<Member>) {
      ReferenceFields below(path);
      Member value{};
      Describe(below, value);
      rows += below.rows;
    }
  }

  std::string path_;
};

}  // namespace confgrove::detail

namespace confgrove {
inline namespace values {

// A file with all settings of a described struct at their defaults, each with what it is for and
// what it may be. Optional settings are commented out; what is required waits to be filled in.
template <typename T>
std::string Sample() {
  const detail::SampleBody body = detail::BodyOf(T{});
  return body.commented + (body.commented.empty() ? "" : "\n") + body.live;
}

// A table in Markdown of all settings of a described struct, blocks with a name of the user's own
// shown as '*'.
template <typename T>
std::string Reference() {
  detail::ReferenceFields fields{std::string()};
  T value{};
  Describe(fields, value);
  return "| Setting | Kind | Range | Default | Meaning |\n| --- | --- | --- | --- | --- |\n" +
         fields.rows;
}

}  // namespace values
}  // namespace confgrove

#endif
