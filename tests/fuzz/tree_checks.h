// What must hold of trees, whatever was done to them; it looks at their fields.
#ifndef CONFGROVE_TESTS_FUZZ_TREE_CHECKS_H
#define CONFGROVE_TESTS_FUZZ_TREE_CHECKS_H

#include <set>
#include <string>

#include "tree/root_section.h"

using Sections = std::set<const confgrove::RealSection*>;

// Whether places, names, parents and kinds fit together in the tree and all that it imports. Adds
// each section to `seen`; one that is in it already has two owners, which isn't sound.
bool IsSound(const confgrove::RootSection& root, Sections* seen);

// Whether a file can carry all below `section`, so that a load gives it back, or ends because a
// link goes to what comes later or doesn't exist.
bool FitsAFile(const confgrove::RealSection& section);

// All that a file carries of what is below `section`.
std::string Dump(const confgrove::RealSection& section);

#endif
