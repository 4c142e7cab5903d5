// The limits that keep every recursive walk within a small stack.
#ifndef CONFGROVE_BASE_LIMITS_H
#define CONFGROVE_BASE_LIMITS_H

#include <cstdint>

namespace confgrove {

// A child of a root has depth 1.
constexpr std::int32_t MaxDepth = 1000;

// Files in one chain of imports, the one that the host opened included.
constexpr std::int32_t MaxImportDepth = 100;

}  // namespace confgrove

#endif
