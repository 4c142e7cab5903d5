// The trace channel: one handler and one level for the whole process.
#ifndef CONFGROVE_BASE_TRACE_H
#define CONFGROVE_BASE_TRACE_H

#include <confgrove/io.h>

#include <cstdint>

namespace confgrove {

// How much is traced, compared by whoever sends. ConfSetTrace writes it, and Silence for a while.
extern std::int32_t TraceLevel;

// Receives every message. Never null; Io::SetTraceHandler writes it, and Silence for a while.
extern TraceFunction* TraceHandler;

// What a message is. The handler gets it, and the library itself does nothing with it.
enum MessageLevel : std::int32_t {
  LevelError = 1,
  LevelWarning = 2,
  LevelSummary = 3,
  LevelFailedLookup = 7
};

}  // namespace confgrove

#endif
