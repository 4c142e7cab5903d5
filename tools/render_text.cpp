// Problems as text, with their lines and marks under the places.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "platform/console.h"
#include "render.h"
#include "standard_input.h"

namespace confgrove::Tool {
namespace {

constexpr std::size_t NumberWidth = 5;
constexpr const char* Red = "31";
constexpr const char* Magenta = "35";
constexpr const char* Blue = "34";

class TextWriter {
 public:
  TextWriter(SourceFiles* sources, bool colour) : sources_(*sources), colour_(colour) {}

  void Headline(const Problems& problems, std::size_t number);
  void Snippet(const Place& place, char mark, const char* colour, const std::string& label);
  void WritePlace(const Place& place);
  void WriteRelated(const Problem& problem);
  void Note(const std::string& mark, const std::string& text);
  std::string Take() { return out_.str(); }

 private:
  void Write(const std::string& text, const char* colour) {
    if (colour_ && !text.empty()) {
      out_ << "\033[1;" << colour << 'm' << text << "\033[0m";
    } else {
      out_ << text;
    }
  }
  void Margin(const std::string& number) {
    Write(std::string(NumberWidth - std::min(NumberWidth, number.size()), ' ') + number + " |",
          Blue);
  }

  SourceFiles& sources_;
  bool colour_;
  std::ostringstream out_;
};

const char* ColourOf(const Problem& problem) {
  return problem.severity == Severity::Error ? Red : Magenta;
}

std::string PlaceText(const Place& place) {
  std::string text = Visible(place.file);
  if (place.line > 0) {
    text += ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
  }
  return text;
}

// What stands in the first line of a problem, behind its place and severity.
std::string Summary(const Problems& problems, const Problem& problem) {
  std::string text = Visible(problem.message.empty() ? problem.text : problem.message);
  text += " [" + problem.code + ']';
  if (problem.unread != 0) text += " (not read by programs)";
  if (problem.follows >= 0) {
    const Place& cause = problems[static_cast<std::size_t>(problem.follows)].place;
    text += " (follows from ";
    text += cause.file == problem.place.file
                ? std::to_string(cause.line) + ':' + std::to_string(cause.column)
                : PlaceText(cause);
    text += ')';
  }
  return text;
}

void TextWriter::WritePlace(const Place& place) { out_ << PlaceText(place) << ": "; }

void TextWriter::Headline(const Problems& problems, std::size_t number) {
  const Problem& problem = problems[number];
  WritePlace(problem.place);
  Write(problem.severity == Severity::Error ? "error:" : "warning:", ColourOf(problem));
  out_ << ' ' << Summary(problems, problem) << '\n';
}

void TextWriter::Snippet(const Place& place, char mark, const char* colour,
                         const std::string& label) {
  if (place.line == 0) return;
  const SourceLine line = sources_.Get(place.file).LineOf(place);
  Margin(std::to_string(place.line));
  out_ << (line.text.empty() ? "" : " ") << line.text << '\n';
  Margin("");
  out_ << ' ' << std::string(line.mark, ' ');
  Write(std::string(line.width, mark) + (label.empty() ? "" : " ") + Visible(label), colour);
  out_ << '\n';
}

void TextWriter::Note(const std::string& mark, const std::string& text) {
  Write(std::string(NumberWidth, ' ') + " = ", Blue);
  out_ << mark << Visible(text) << '\n';
}

// Of a long chain of imports, its ends.
void TextWriter::WriteRelated(const Problem& problem) {
  constexpr std::size_t FromEachEnd = 3;
  const std::vector<Related>& related = problem.related;
  const bool is_long = related.size() > 2 * FromEachEnd + 1;
  for (std::size_t i = 0; i < related.size(); ++i) {
    if (is_long && i == FromEachEnd) {
      i = related.size() - FromEachEnd;
      Note("", "and " + std::to_string(i - FromEachEnd) + " more");
    }
    if (related[i].place.file != problem.place.file) {
      Note("", PlaceText(related[i].place) + ": " + related[i].text);
    } else {
      Snippet(related[i].place, '-', Blue, related[i].text);
    }
  }
}

}  // namespace

Problems ProblemsOf(const std::string& file) {
  Problems problems = confgrove::Check(ToKnownInput(file));
  for (Problem& problem : problems) {
    problem.place.file = FromKnownInput(problem.place.file);
    for (Related& related : problem.related) {
      related.place.file = FromKnownInput(related.place.file);
    }
    for (Fix& fix : problem.fixes) fix.file = FromKnownInput(fix.file);
  }
  return problems;
}

std::string AsText(const Problems& problems, std::size_t number, SourceFiles* sources,
                   bool colour) {
  const Problem& problem = problems[number];
  TextWriter writer(sources, colour);
  writer.Headline(problems, number);
  const bool has_message = !problem.message.empty();
  writer.Snippet(problem.place, '^', ColourOf(problem), has_message ? problem.text : "");
  if (problem.place.line == 0 && has_message) writer.Note("", problem.text);
  writer.WriteRelated(problem);
  for (const Fix& fix : problem.fixes) {
    writer.Note(fix.safe != 0 ? "fix: " : "perhaps: ", fix.text);
  }
  return writer.Take();
}

bool MayColour() {
  const char* const off = std::getenv("NO_COLOR");
  return off == nullptr || *off == '\0';
}

void ShowErrors(const std::string& file) {
  const Problems problems = ProblemsOf(file);
  const bool colour = MayColour() && Platform::StandardErrorIsTerminal();
  SourceFiles sources;
  std::size_t shown = 0;
  for (std::size_t i = 0; i < problems.size(); ++i) {
    const Problem& problem = problems[i];
    if (problem.severity != Severity::Error || problem.follows >= 0 || problem.unread != 0)
      continue;
    if (++shown <= MostShown) std::cerr << AsText(problems, i, &sources, colour);
  }
  if (shown > MostShown) std::cerr << "and " << shown - MostShown << " more\n";
}

std::string AsShort(const Problems& problems, std::size_t number) {
  const Problem& problem = problems[number];
  std::string line = PlaceText(problem.place);
  line += problem.severity == Severity::Error ? ": error: " : ": warning: ";
  line += Summary(problems, problem);
  if (!problem.message.empty()) line += ": " + Visible(problem.text);
  return line + '\n';
}

}  // namespace confgrove::Tool
