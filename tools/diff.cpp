// Unified diffs and refused saves.
#include "diff.h"

#include <dtl/dtl.hpp>
#include <iostream>
#include <sstream>
#include <vector>

#include "text.h"

namespace confgrove::Tool {
namespace {

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  if (!text.empty() && text.back() != '\n') lines.back() += "\n\\ No newline at end of file";
  return lines;
}

}  // namespace

void PrintDiff(const std::string& file, const std::string& before, const std::string& after) {
  if (before == after) return;
  dtl::Diff<std::string> diff(SplitLines(before), SplitLines(after));
  diff.onHuge();
  diff.compose();
  diff.composeUnifiedHunks();
  std::cout << "--- " << file << "\n+++ " << file << '\n';
  auto hunks = diff.getUniHunks();
  for (auto& hunk : hunks) {  // a file without lines has them from line 0 on
    if (hunk.b == 0) hunk.a = 0;
    if (hunk.d == 0) hunk.c = 0;
  }
  dtl::Diff<std::string>::printUnifiedFormat(hunks, std::cout);
}

std::string ReasonOf(const SaveResult& result, const std::string& file) {
  std::string reason = file;
  if (result.line > 0) reason += ':' + std::to_string(result.line);
  if (!result.section.empty()) reason += ": '" + NameToUtf8(result.section) + "'";
  return reason + ": " + result.reason;
}

}  // namespace confgrove::Tool
