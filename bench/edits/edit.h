// One small change of a file by one library, as its users make it: read, change, write.
#ifndef CONFGROVE_BENCH_EDITS_EDIT_H
#define CONFGROVE_BENCH_EDITS_EDIT_H

#include <string>

namespace edits {

enum class Change {
  Set,    // server.port becomes 9090
  Add,    // server.backlog, 16, behind its siblings
  Remove  // limits.legacy
};

// Throws if it can't be done.
void Make(Change change, const std::string& file);

}  // namespace edits

#endif
