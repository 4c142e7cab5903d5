// What the fuzz targets share.
#ifndef CONFGROVE_TESTS_FUZZ_HARNESS_H
#define CONFGROVE_TESTS_FUZZ_HARNESS_H

#include <confgrove/confgrove.h>

#include <cstddef>

#include "tree_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Ends the process with `what` if it doesn't hold.
void Require(bool holds, const char* what);

// A trace handler that reads all arguments.
void ReadMessage(std::int32_t level, const char* format, ...);

// Makes the root directory hold base.cfg, other.cfg (which imports base), faulty.cfg and the
// directory folder.cfg, and nothing else. An input's own configurations have names of one letter.
void FreshFiles();
void WriteFile(const std::string& name, const std::string& bytes);
std::string FileBytes(const std::string& name);

// Saves `root`, unless its name has grown long, and loads its file. If a file can carry the tree,
// the same tree must come back, and the same bytes at the next save.
void SaveAndLoad(confgrove::RootSection* root);

#endif
