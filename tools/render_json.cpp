// Problems as JSON and as SARIF.
#include <nlohmann/json.hpp>
#include <set>

#include "render.h"
#include "text.h"

namespace confgrove::Tool {
namespace {

using Json = nlohmann::ordered_json;

const char* SeverityText(const Problem& problem) {
  return problem.severity == Severity::Error ? "error" : "warning";
}

void PutPlace(const Place& place, SourceFiles* sources, Json* out) {
  (*out)["file"] = TextToUtf8(place.file);
  (*out)["line"] = place.line;
  (*out)["column"] = place.column;
  (*out)["column_utf16"] = place.line == 0 ? 0 : sources->Get(place.file).Utf16Column(place);
  (*out)["offset"] = place.offset;
  (*out)["length"] = place.length;
}

Json EditsOf(const Fix& fix) {
  Json edits = Json::array();
  for (const Edit& edit : fix.edits) {
    edits.push_back(
        {{"offset", edit.offset}, {"length", edit.length}, {"text", TextToUtf8(edit.text)}});
  }
  return edits;
}

std::string Dump(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

// A path as a relative or absolute URI reference.
std::string Uri(const std::string& path) {
  constexpr std::string_view Plain = "-._~/";
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string uri = path.empty() || path.front() != '/' ? "" : "file://";
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (letter || Plain.find(c) != std::string_view::npos) {
      uri += c;
    } else if (c == '\\') {
      uri += '/';
    } else {
      uri += '%';
      uri += Digits[byte / 16U];
      uri += Digits[byte % 16U];
    }
  }
  return uri;
}

Json LocationOf(const Place& place) {
  Json location = {{"artifactLocation", {{"uri", Uri(place.file)}}}};
  if (place.line > 0) {
    location["region"] = {{"startLine", place.line},
                          {"startColumn", place.column},
                          {"byteOffset", place.offset},
                          {"byteLength", place.length}};
  }
  return {{"physicalLocation", location}};
}

Json FixOf(const Fix& fix) {
  Json replacements = Json::array();
  for (const Edit& edit : fix.edits) {
    replacements.push_back(
        {{"deletedRegion", {{"byteOffset", edit.offset}, {"byteLength", edit.length}}},
         {"insertedContent", {{"text", TextToUtf8(edit.text)}}}});
  }
  const Json change = {{"artifactLocation", {{"uri", Uri(fix.file)}}},
                       {"replacements", replacements}};
  return {{"description", {{"text", TextToUtf8(fix.text)}}},
          {"artifactChanges", Json::array({change})}};
}

Json ResultOf(const Problem& problem) {
  std::string text = problem.message;
  if (!problem.text.empty()) text += (text.empty() ? "" : ": ") + problem.text;
  Json result = {{"ruleId", problem.code},
                 {"level", SeverityText(problem)},
                 {"message", {{"text", TextToUtf8(text)}}},
                 {"locations", Json::array({LocationOf(problem.place)})}};
  for (const Related& related : problem.related) {
    Json location = LocationOf(related.place);
    location["message"] = {{"text", TextToUtf8(related.text)}};
    result["relatedLocations"].push_back(location);
  }
  for (const Fix& fix : problem.fixes) result["fixes"].push_back(FixOf(fix));
  if (problem.follows >= 0) result["properties"]["follows"] = problem.follows;
  if (problem.unread != 0) result["properties"]["unread"] = true;
  return result;
}

}  // namespace

std::string AsJson(const Problems& problems, std::size_t number, SourceFiles* sources) {
  const Problem& problem = problems[number];
  Json json;
  json["severity"] = SeverityText(problem);
  json["code"] = problem.code;
  json["message"] = problem.message;
  json["text"] = TextToUtf8(problem.text);
  PutPlace(problem.place, sources, &json);
  json["message_line"] = problem.message_line;
  json["follows"] = problem.follows >= 0 ? Json(problem.follows) : Json();
  json["unread"] = problem.unread != 0;
  json["related"] = Json::array();
  for (const Related& related : problem.related) {
    Json place = {{"text", TextToUtf8(related.text)}};
    PutPlace(related.place, sources, &place);
    json["related"].push_back(place);
  }
  json["fixes"] = Json::array();
  for (const Fix& fix : problem.fixes) {
    json["fixes"].push_back({{"text", TextToUtf8(fix.text)},
                             {"safe", fix.safe != 0},
                             {"file", TextToUtf8(fix.file)},
                             {"edits", EditsOf(fix)}});
  }
  json["rendered"] = AsText(problems, number, sources, false);
  return Dump(json);
}

std::string AsSarif(const Problems& problems) {
  Json results = Json::array();
  Json rules = Json::array();
  std::set<std::string> known;
  for (const Problem& problem : problems) {
    results.push_back(ResultOf(problem));
    if (known.insert(problem.code).second) rules.push_back({{"id", problem.code}});
  }
  const Json driver = {{"name", "confgrove"}, {"version", CONFGROVE_VERSION}, {"rules", rules}};
  const Json run = {
      {"tool", {{"driver", driver}}}, {"columnKind", "unicodeCodePoints"}, {"results", results}};
  return Dump({{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
               {"version", "2.1.0"},
               {"runs", Json::array({run})}});
}

}  // namespace confgrove::Tool
