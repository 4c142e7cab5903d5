// Problems as people and programs read them.
#ifndef CONFGROVE_TOOLS_RENDER_H
#define CONFGROVE_TOOLS_RENDER_H

#include <confgrove/problem.h>

#include <cstddef>
#include <string>
#include <vector>

#include "source_line.h"

namespace confgrove::Tool {

using Problems = std::vector<Problem>;

// All problems of `file`, which can be the standard input that has been read already.
Problems ProblemsOf(const std::string& file);

// One problem with its lines, as text. `number` is its place among the problems.
std::string AsText(const Problems& problems, std::size_t number, SourceFiles* sources, bool colour);

// Sends the errors for which programs refuse `file` to standard error.
void ShowErrors(const std::string& file);

// More aren't shown to people.
constexpr std::size_t MostShown = 50;

// Whether the user has nothing against colours on a terminal.
bool MayColour();

// One problem on a line.
std::string AsShort(const Problems& problems, std::size_t number);

// One problem as a JSON object, on a line.
std::string AsJson(const Problems& problems, std::size_t number, SourceFiles* sources);

// All problems as one SARIF 2.1.0 document.
std::string AsSarif(const Problems& problems);

}  // namespace confgrove::Tool

#endif
