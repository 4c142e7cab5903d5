// Work whose instructions are counted: parse, 20,000 look-ups, 20,000 sets and save of the 1 MB
// tree. Run it under `valgrind --tool=callgrind --instr-atstart=no`: each piece ends in a dump of
// its own that bears its name. scripts/perf-guard does it all.
#include <confgrove/confgrove.h>
#include <valgrind/callgrind.h>

#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "files.h"
#include "tree_generator.h"

namespace {

void Begin() { CALLGRIND_START_INSTRUMENTATION; }

// What was counted since Begin is dumped under `name`.
void End(const char* name) {
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(name);
}

void Expect(bool holds, const char* fault) {
  if (!holds) throw std::runtime_error(fault);
}

void Work() {
  const bench::Node tree = bench::MakeTree(bench::Sections1M);
  const std::string text = bench::ConfigurationText(tree);
  const bench::TemporaryDirectory directory;
  const std::string file = directory.File("tree.cfg");
  bench::WriteFile(file, text.data(), text.size());

  Begin();
  const std::unique_ptr<Config> config(ConfCreate(file.c_str(), ConfCreateOpen, ConfNameFullPath));
  End("parse");
  Expect(config != nullptr, "the tree can't be read");

  std::vector<bench::Query> queries = bench::MakeQueries(tree, 20000);
  std::vector<Section*> blocks;
  for (const bench::Query& query : queries) {
    Section* block = config.get();
    for (const std::string& name : query.base) block = block->GetSection(name.c_str());
    blocks.push_back(block);
  }

  bool all = true;
  Begin();
  for (std::size_t i = 0; i < queries.size(); ++i) {
    double value = 0;
    all = blocks[i]->GetDouble(&value, queries[i].path.c_str()) && value == queries[i].value && all;
  }
  End("look-up");
  Expect(all, "a number isn't there");

  Begin();
  for (std::size_t i = 0; i < queries.size(); ++i) {
    all = blocks[i]->SetDouble(-queries[i].value, queries[i].path.c_str()) && all;
  }
  End("set");
  Expect(all, "a number can't be set");

  Begin();
  const bool saved = config->Save();
  End("save");
  Expect(saved, "the tree can't be saved");
}

}  // namespace

int main() try {
  Work();
  return 0;
} catch (const std::exception& error) {
  std::cerr << "bench_guard: " << error.what() << "\n";
  return 1;
}
