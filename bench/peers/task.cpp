#include "task.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "peer.h"

namespace bench {
namespace {

std::string PathFromRoot(const Query& query) {
  std::string path;
  for (const std::string& name : query.base) path += name + ".";
  return path + query.path;
}

std::vector<std::string> Split(const std::string& path) {
  std::vector<std::string> names;
  std::istringstream stream(path);
  for (std::string name; std::getline(stream, name, '.');) names.push_back(name);
  return names;
}

}  // namespace

Task MakeTask(const Node& root, bool wide) {
  Task task;
  task.sections = CountSections(root);
  task.queries = MakeQueries(root, std::min<std::size_t>(task.sections, 100000));
  if (wide) {
    for (const Node& node : root.children[0].children[0].children) task.names += Seen(node.name);
  }
  return task;
}

void WriteTask(const Task& task, const std::string& file) {
  std::ofstream stream(file);
  stream << task.sections << " " << task.names << "\n";
  for (const Query& query : task.queries) {
    stream << NumberText(query.value) << " " << PathFromRoot(query) << "\n";
  }
  if (!stream.flush()) throw std::runtime_error("cannot write " + file);
}

Task ReadTask(const std::string& file) {
  Task task;
  std::ifstream stream(file);
  if (!(stream >> task.sections >> task.names)) throw std::runtime_error("cannot read " + file);
  double value = 0;
  for (std::string path; stream >> value >> path;) {
    task.queries.push_back(MakeQuery(Split(path), value));
  }
  return task;
}

}  // namespace bench
