#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/Interruption.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool ErrorOutputIsTerminal() {
#ifdef _WIN32
  return _isatty(2) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const quillmark::Console console{.Out = std::cout,
                                   .Err = std::cerr,
                                   .ErrIsTerminal = ErrorOutputIsTerminal(),
                                   .Interrupted = quillmark::InterruptionGuard::Interrupted};
  return quillmark::RunCommandLine(std::vector<std::string>(argv + std::min(argc, 1), argv + argc), console);
}
