/// Writes down which functions each test of a program reaches, for scripts/mutation.py: built with
/// QUILLMARK_REACHED alone, and silent unless QUILLMARK_REACHED_FILE names where to. The compiler keeps a
/// count for each function and a table of where they begin.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include <gtest/gtest.h>

extern "C" const char __executable_start;  // NOLINT: the linker's

namespace {

struct Entry {
  std::uintptr_t Place = 0;
  std::uintptr_t Kind = 0;
};

char* counts = nullptr;
std::size_t functionCount = 0;
const Entry* entries = nullptr;

/// One line a function, "F" and where it begins; then one a test that passed, "T", its name, its milliseconds
/// and the numbers of the functions that it reached.
class ReachedWriter : public testing::EmptyTestEventListener {
 public:
  explicit ReachedWriter(const char* name) : file_(name) {
    for (std::size_t i = 0; i < functionCount; ++i) {
      file_ << "F\t" << std::hex << entries[i].Place - reinterpret_cast<std::uintptr_t>(&__executable_start)
            << '\n';
    }
    file_ << std::dec;
  }

  void OnTestStart(const testing::TestInfo& /*test*/) override { std::memset(counts, 0, functionCount); }

  void OnTestEnd(const testing::TestInfo& test) override {
    if (!test.result()->Passed() || test.result()->Skipped()) {
      return;
    }
    file_ << "T\t" << test.test_suite_name() << '.' << test.name() << '\t' << test.result()->elapsed_time()
          << '\t';
    for (std::size_t i = 0; i < functionCount; ++i) {
      if (counts[i] != 0) {
        file_ << i << ' ';
      }
    }
    file_ << std::endl;
  }

 private:
  std::ofstream file_;
};

}  // namespace

// A program that uses no function of the layers has no tables. Both are those of the whole program, and are
// told once for each object, before anything else of it starts.
extern "C" void __sanitizer_cov_8bit_counters_init(char* start, char* stop) {  // NOLINT: the compiler's name
  counts = start;
  functionCount = static_cast<std::size_t>(stop - start);
}

extern "C" void __sanitizer_cov_pcs_init(const std::uintptr_t* start,
                                         const std::uintptr_t* /*stop*/) {  // NOLINT
  entries = reinterpret_cast<const Entry*>(start);
}

namespace {

[[maybe_unused]] const bool isWriting = [] {
  const char* name = std::getenv("QUILLMARK_REACHED_FILE");
  if (name == nullptr || counts == nullptr) {
    return false;
  }
  testing::UnitTest::GetInstance()->listeners().Append(new ReachedWriter(name));
  return true;
}();

}  // namespace
