// Writing without being killed for it, on POSIX systems.
#ifndef CONFGROVE_PLATFORM_WRITE_SIGNALS_H
#define CONFGROVE_PLATFORM_WRITE_SIGNALS_H

#include <csignal>

namespace confgrove::Platform {

// While it lives, a write beyond the file size limit or to a closed pipe fails, as a write should,
// and doesn't end the process.
class WriteSignalsBlocked {
 public:
  WriteSignalsBlocked() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGXFSZ);
    sigaddset(&signals_, SIGPIPE);
    sigpending(&pending_before_);
    pthread_sigmask(SIG_BLOCK, &signals_, &mask_before_);
  }
  WriteSignalsBlocked(const WriteSignalsBlocked&) = delete;
  WriteSignalsBlocked& operator=(const WriteSignalsBlocked&) = delete;
  ~WriteSignalsBlocked() {
    sigset_t pending;
    sigpending(&pending);
    for (const int signal : {SIGXFSZ, SIGPIPE}) {  // take back what the writes have raised
      if (sigismember(&pending, signal) == 0 || sigismember(&pending_before_, signal) != 0)
        continue;
      sigset_t one;
      sigemptyset(&one);
      sigaddset(&one, signal);
      int taken = 0;
      sigwait(&one, &taken);
    }
    pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
  }

 private:
  sigset_t signals_{};
  sigset_t pending_before_{};
  sigset_t mask_before_{};
};

}  // namespace confgrove::Platform

#endif
