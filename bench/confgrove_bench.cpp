// The library's own figures. `per_section` is the time of one section: flat from size to size if
// the work is linear. The argument is a number of sections, siblings or levels: see `MakeTree`,
// `MakeWideTree` and `MakeDeepTree`.
#include <benchmark/benchmark.h>
#include <confgrove/confgrove.h>
#include <confgrove/problem.h>
#include <confgrove/save_in_place.h>
#include <confgrove/values.h>

#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

#include "cpu_time.h"
#include "files.h"
#include "heap_counter.h"
#include "tree_generator.h"

namespace bench {
namespace {

using MakeFunction = Node (*)(std::size_t);

struct Case {
  std::string file;
  double sections = 0;
  double bytes = 0;
  std::vector<Query> queries;
};

// The case of a benchmark's shape and argument, made when it is first asked for.
const Case& CaseOf(const benchmark::State& state, MakeFunction make) {
  static const TemporaryDirectory directory;
  static std::map<std::pair<MakeFunction, std::int64_t>, Case> cases;
  const auto [entry, is_new] = cases.try_emplace({make, state.range(0)});
  Case& made = entry->second;
  if (is_new) {
    const Node tree = make(static_cast<std::size_t>(state.range(0)));
    const std::string text = ConfigurationText(tree);
    made.file = directory.File("tree" + std::to_string(cases.size()) + ".cfg");
    made.sections = static_cast<double>(CountSections(tree));
    made.bytes = static_cast<double>(text.size());
    made.queries = MakeQueries(tree, 20000);
    WriteFile(made.file, text.data(), text.size());
  }
  return made;
}

std::unique_ptr<Config> Open(const Case& tree) {
  std::unique_ptr<Config> config(ConfCreate(tree.file.c_str(), ConfCreateOpen, ConfNameFullPath));
  if (config == nullptr) throw std::runtime_error("cannot read " + tree.file);
  return config;
}

void Report(benchmark::State* state, double sections) {
  state->SetComplexityN(state->range(0));
  state->counters["per_section"] = benchmark::Counter(
      sections, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The time is that of the parse. `destroy` is that of one section, too.
void ParseAndDestroy(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  double destroy = 0;
  for (auto _ : state) {
    std::unique_ptr<Config> config;
    state.SetIterationTime(CpuSeconds([&] { config = Open(tree); }));
    destroy += CpuSeconds([&] { config.reset(); });
  }
  Report(&state, tree.sections);
  state.counters["destroy"] =
      benchmark::Counter(destroy / tree.sections, benchmark::Counter::kAvgIterations);
}

void Save(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  const std::unique_ptr<Config> config = Open(tree);
  config->SetName("written", "");
  for (auto _ : state) {
    bool saved = false;
    state.SetIterationTime(CpuSeconds([&] { saved = config->Save(); }));
    if (!saved) state.SkipWithError("cannot save");
    std::filesystem::remove(config->GetFileName());
  }
  Report(&state, tree.sections);
}

// One number changed and saved in place. `of_load_and_save` is its time in those of a load of the
// same file and a canonical save.
void SaveOneChange(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  const std::string copy = std::filesystem::path(tree.file).replace_filename("edited.cfg").string();
  std::filesystem::copy_file(tree.file, copy, std::filesystem::copy_options::overwrite_existing);
  double number = 0, load = 0, save = 0, in_place = 0;
  for (auto _ : state) {
    std::unique_ptr<Config> config;
    load += CpuSeconds(
        [&] { config.reset(ConfCreate(copy.c_str(), ConfCreateOpen, ConfNameFullPath)); });
    const Query& query = tree.queries.front();
    Section* block = config.get();
    for (const std::string& name : query.base) block = block->GetSection(name.c_str());
    block->SetDouble(++number, query.path.c_str());
    confgrove::SaveResult result;
    const double seconds = CpuSeconds([&] { result = confgrove::SaveInPlace(config.get()); });
    if (result.outcome != confgrove::SaveOutcome::Written || result.edits.size() != 1) {
      state.SkipWithError("not one change");
    }
    in_place += seconds;
    state.SetIterationTime(seconds);
    config->SetName("written", "");
    save += CpuSeconds([&] { config->Save(); });
  }
  Report(&state, tree.sections);
  state.counters["of_load_and_save"] = in_place / (load + save);
}

// All problems of a sound file: there are none. `of_load` is its time in that of a load.
void CheckSound(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  double load = 0, check = 0;
  for (auto _ : state) {
    load += CpuSeconds([&] { Open(tree); });
    std::size_t problems = 0;
    const double seconds = CpuSeconds([&] { problems = confgrove::Check(tree.file).size(); });
    if (problems > 0) state.SkipWithError("a sound file has problems");
    check += seconds;
    state.SetIterationTime(seconds);
  }
  Report(&state, tree.sections);
  state.counters["of_load"] = check / load;
}

// A number to find from a block, by three names.
struct Target {
  Section* block;
  const char* path;
  double value;
};

std::vector<Target> Targets(const Case& tree, Config* config) {
  std::vector<Target> targets;
  for (const Query& query : tree.queries) {
    std::string base;
    for (const std::string& name : query.base) base.append(base.empty() ? "" : ".").append(name);
    targets.push_back({config->GetSection(base.c_str()), query.path.c_str(), query.value});
  }
  return targets;
}

// The most that the heap held at once for all the look-ups of `targets`: a hit should take nothing.
double HeapOfLookups(const std::vector<Target>& targets) {
  double value = 0;
  StartCounting();
  for (const Target& target : targets) {
    if (!target.block->GetDouble(&value, target.path) || value != target.value) {
      throw std::runtime_error(std::string("wrong number at ") + target.path);
    }
  }
  return StopCounting().peak;
}

// A configuration as programs have them, a number by a path of one name or of three.
struct SmallCase {
  explicit SmallCase(const benchmark::State& state)
      : config(ConfCreate("small", ConfCreateNew)),
        path(state.range(0) == 1 ? "setting5" : "block5.inner.setting5") {
    for (int i = 0; i < 100; ++i) {
      const std::string block = "block" + std::to_string(i / 10) + ".inner.";
      const std::string name = "setting" + std::to_string(i % 10);
      config->SetInt(i, name.c_str());
      config->SetInt(i, (block + name).c_str());
    }
  }
  std::unique_ptr<Config> config;
  const char* path;
};

void GetPlainNumber(benchmark::State& state) {
  const SmallCase small(state);
  for (auto _ : state) {
    double value = 0;
    small.config->GetDouble(&value, small.path);
    benchmark::DoNotOptimize(value);
  }
}

// The same by a reader.
void GetTypedNumber(benchmark::State& state) {
  const SmallCase small(state);
  confgrove::Reader reader(*small.config);
  for (auto _ : state) {
    double value = reader.Get(small.path, 0.0);
    benchmark::DoNotOptimize(value);
  }
}

void GetNumber(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  const std::unique_ptr<Config> config = Open(tree);
  const std::vector<Target> targets = Targets(tree, config.get());
  state.counters["heap"] = HeapOfLookups(targets);
  std::size_t next = 0;
  for (auto _ : state) {
    double value = 0;
    targets[next].block->GetDouble(&value, targets[next].path);
    benchmark::DoNotOptimize(value);
    if (++next == targets.size()) next = 0;
  }
}

void SetNumber(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  const std::unique_ptr<Config> config = Open(tree);
  const std::vector<Target> targets = Targets(tree, config.get());
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(targets[next].block->SetDouble(1.5, targets[next].path));
    if (++next == targets.size()) next = 0;
  }
}

void ListNames(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  const std::unique_ptr<Config> config = Open(tree);
  Section* block = config->GetSection("outer.inner");
  const std::int32_t count = block->GetSectionCount("");
  for (auto _ : state) {
    for (std::int32_t i = 0; i < count; ++i) {
      benchmark::DoNotOptimize(std::strlen(block->GetName("", i)));
    }
  }
  Report(&state, count);
}

// Bytes a section that a loaded tree holds, and the most that the load held; and its file's.
void Heap(benchmark::State& state, MakeFunction make) {
  const Case& tree = CaseOf(state, make);
  HeapUse use;
  for (auto _ : state) {
    StartCounting();
    const std::unique_ptr<Config> config = Open(tree);
    use = StopCounting();
  }
  state.counters["live"] = use.live / tree.sections;
  state.counters["peak"] = use.peak / tree.sections;
  state.counters["file"] = tree.bytes / tree.sections;
}

void AllSizes(benchmark::internal::Benchmark* benchmark) {
  for (std::size_t sections : {Sections8K, Sections1M, Sections4M, Sections16M, Sections64M}) {
    benchmark->Arg(static_cast<std::int64_t>(sections));
  }
}

void Linear(benchmark::internal::Benchmark* benchmark) {
  AllSizes(benchmark);
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
}

void Single(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(ParseAndDestroy, mixed, MakeTree)->Apply(Linear);
BENCHMARK_CAPTURE(ParseAndDestroy, wide, MakeWideTree)->Arg(100000)->Apply(Single);
BENCHMARK_CAPTURE(ParseAndDestroy, deep, MakeDeepTree)->Arg(200)->Apply(Single);
BENCHMARK_CAPTURE(Save, mixed, MakeTree)->Apply(Linear);
BENCHMARK_CAPTURE(Save, wide, MakeWideTree)->Arg(100000)->Apply(Single);
BENCHMARK_CAPTURE(Save, deep, MakeDeepTree)->Arg(200)->Apply(Single);
BENCHMARK_CAPTURE(SaveOneChange, mixed, MakeTree)->Apply(Linear);
BENCHMARK_CAPTURE(CheckSound, mixed, MakeTree)->Apply(Linear);
BENCHMARK(GetPlainNumber)->ArgName("names")->Arg(1)->Arg(3);
BENCHMARK(GetTypedNumber)->ArgName("names")->Arg(1)->Arg(3);
BENCHMARK_CAPTURE(GetNumber, mixed, MakeTree)->Apply(AllSizes);
BENCHMARK_CAPTURE(GetNumber, wide, MakeWideTree)->Arg(20)->Arg(100000);
BENCHMARK_CAPTURE(GetNumber, deep, MakeDeepTree)->Arg(200);
BENCHMARK_CAPTURE(SetNumber, mixed, MakeTree)->Apply(AllSizes);
BENCHMARK_CAPTURE(SetNumber, wide, MakeWideTree)->Arg(20)->Arg(100000);
BENCHMARK_CAPTURE(SetNumber, deep, MakeDeepTree)->Arg(200);
BENCHMARK_CAPTURE(ListNames, wide, MakeWideTree)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(Heap, mixed, MakeTree)->Apply(AllSizes)->Iterations(1);
BENCHMARK_CAPTURE(Heap, wide, MakeWideTree)->Arg(100000)->Iterations(1);
BENCHMARK_CAPTURE(Heap, deep, MakeDeepTree)->Arg(200)->Iterations(1);

}  // namespace
}  // namespace bench
