// explain: prints the page of a code.
#include <iostream>
#include <memory>

#include "commands.h"
#include "pages.h"
#include "refusal.h"

namespace confgrove::Tool {
namespace {

constexpr std::string_view Heading = "\n### ";

int ListCodes() {
  std::string_view rest = MessagesChapter;
  for (std::size_t at = rest.find(Heading); at != std::string_view::npos; at = rest.find(Heading)) {
    rest.remove_prefix(at + Heading.size());
    std::cout << rest.substr(0, rest.find('\n')) << '\n';
  }
  return ExitDone;
}

int Explain(const std::string& code) {
  if (code.empty()) return ListCodes();
  const std::string heading = std::string(Heading) + code + '\n';
  const std::size_t begin = MessagesChapter.find(heading);
  if (begin == std::string_view::npos) {
    throw Refusal("there is no code '" + code + "'; 'confgrove explain' lists all of them");
  }
  std::string_view page = MessagesChapter.substr(begin + heading.size());
  page = page.substr(0, page.find(Heading));
  const std::size_t last = page.find_last_not_of('\n') + 1;
  std::cout << code << '\n' << page.substr(0, last) << '\n';
  return ExitDone;
}

}  // namespace

void AddExplain(Command* tool) {
  const auto code = std::make_shared<std::string>();
  Command explain = tool->AddCommand("explain", "Tell what is behind the code of a problem");
  explain.AddText("CODE", code.get(), "As check shows it in brackets; all codes without it");
  explain.SetAction([code] { return Explain(*code); });
}

}  // namespace confgrove::Tool
