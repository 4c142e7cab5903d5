// Check on files of nothing but faults. The argument is the size in MB, and the time is linear in
// it; what follows from what, and what may have been meant, is looked for among all of them.
#include <benchmark/benchmark.h>
#include <confgrove/problem.h>

#include <string>

#include "cpu_time.h"
#include "files.h"

namespace bench {
namespace {

// `pattern` again and again, each '%' in it being a number of its own; on one line, or each on its
// own.
std::string Repeated(const std::string& pattern, std::size_t size, bool one_line) {
  std::string text;
  for (int number = 0; text.size() < size; ++number) {
    for (const char c : pattern) text += c == '%' ? std::to_string(number) : std::string(1, c);
    text += one_line ? ' ' : '\n';
  }
  return text + '\n';
}

void CheckFaults(benchmark::State& state, const char* pattern, bool one_line) {
  constexpr std::size_t Megabyte = 1'000'000;
  const TemporaryDirectory directory;
  const std::string file = directory.File("faults.cfg");
  const std::string text =
      Repeated(pattern, static_cast<std::size_t>(state.range(0)) * Megabyte, one_line);
  WriteFile(file, text.data(), text.size());
  std::size_t problems = 0;
  for (auto _ : state) {
    state.SetIterationTime(CpuSeconds([&] { problems = confgrove::Check(file).size(); }));
  }
  if (problems == 0) state.SkipWithError("no problems");
  state.counters["problems"] = static_cast<double>(problems);
  state.SetComplexityN(state.range(0));
}

void Linear(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(2)->Range(1, 4)->UseManualTime()->Unit(benchmark::kMillisecond);
  benchmark->Complexity(benchmark::oN);
}

BENCHMARK_CAPTURE(CheckFaults, redefinitions, "a = 1", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, illegal_bytes, ";", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, illegal_bytes_on_one_line, "k% = 1;", true)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, open_comment, "/* k% = 1", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, slashes, "//", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, comments_with_slashes, "// the port %", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, links_misspelt, "k% = 1\nl% = @k%x", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, links_too_early, "l% = @k% k% = 1", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, texts_without_quotes, "k% = fast", true)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, texts_without_an_end, "k% = \"x", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, one_long_word, "a.b", true)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, names_alone, "k%", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, closing_braces, "}", false)->Apply(Linear);
BENCHMARK_CAPTURE(CheckFaults, directives, "$imp \"x\"", false)->Apply(Linear);

}  // namespace
}  // namespace bench
