// What a process is given: the file of a tree in a library's format, and what to ask of that tree.
#ifndef CONFGROVE_BENCH_PEERS_TASK_H
#define CONFGROVE_BENCH_PEERS_TASK_H

#include <cstddef>
#include <string>
#include <vector>

#include "tree_generator.h"

namespace bench {

struct Task {
  std::size_t sections = 0;
  std::size_t names = 0;  // what Peer::List gives; 0: there is no block to list
  std::vector<Query> queries;
};

Task MakeTask(const Node& root, bool wide);  // `wide`: has a block to list

// By way of a file, so that a process that reads it needs no tree of its own.
void WriteTask(const Task& task, const std::string& file);
Task ReadTask(const std::string& file);

}  // namespace bench

#endif
