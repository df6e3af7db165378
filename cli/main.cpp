#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/Interruption.h"
#include "translations/UsersLanguage.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif
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

/// Every picture's memory is given back before the next one takes it again. To return it to the system in
/// between, as the C library would, takes a tenth of an export's time.
void KeepFreedMemory() {
#ifdef __GLIBC__
  constexpr int LargerThanAnyPicture = 4 << 20;
  mallopt(M_MMAP_THRESHOLD, LargerThanAnyPicture);
  mallopt(M_TRIM_THRESHOLD, 16 * LargerThanAnyPicture);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  KeepFreedMemory();
  quillmark::SpeakUsersLanguage();

  const quillmark::cli::Console console{.Out = std::cout,
                                        .Err = std::cerr,
                                        .ErrIsTerminal = ErrorOutputIsTerminal(),
                                        .Interrupted = quillmark::cli::InterruptionGuard::Interrupted};
  return quillmark::cli::RunCommandLine(std::vector<std::string>(argv + std::min(argc, 1), argv + argc),
                                        console);
}
