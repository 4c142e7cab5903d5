// Silence: reading on the library's own behalf, of which nobody should hear.
#ifndef CONFGROVE_BASE_SILENCE_H
#define CONFGROVE_BASE_SILENCE_H

#include <cstdint>

#include "base/trace.h"

namespace confgrove {

// While it lives no message reaches the host.
class Silence {
 public:
  Silence() {
    TraceHandler = Drop;
    TraceLevel = 0;
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence() {
    TraceHandler = handler_;
    TraceLevel = level_;
  }

 private:
  static void Drop(std::int32_t /*level*/, const char* /*format*/, ...) {}

  TraceFunction* handler_ = TraceHandler;
  std::int32_t level_ = TraceLevel;
};

}  // namespace confgrove

#endif
