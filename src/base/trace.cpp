// The trace channel and its default handler.
#include "base/trace.h"

#include <cstdarg>
#include <cstdio>

namespace confgrove {
namespace {

void DefaultTraceHandler(std::int32_t /*level*/, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
  std::fputc('\n', stderr);
}

}  // namespace

std::int32_t TraceLevel = 0;
TraceFunction* TraceHandler = DefaultTraceHandler;

}  // namespace confgrove

void Io::SetTraceHandler(TraceFunction* handler) {
  if (handler != nullptr) confgrove::TraceHandler = handler;
}
