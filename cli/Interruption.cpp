#include "cli/Interruption.h"

#include <csignal>

namespace quillmark::cli {
namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void RememberInterruption(int signal) {
  interrupted = 1;
  std::signal(signal, SIG_DFL);
}

}  // namespace

InterruptionGuard::InterruptionGuard() : previous_(std::signal(SIGINT, RememberInterruption)) {
  interrupted = 0;
  if (previous_ == SIG_IGN) {
    std::signal(SIGINT, SIG_IGN);
  }
}

InterruptionGuard::~InterruptionGuard() {
  std::signal(SIGINT, previous_ == SIG_ERR ? SIG_DFL : previous_);
}

bool InterruptionGuard::Interrupted() {
  return interrupted != 0;
}

}  // namespace quillmark::cli
