/// Where QUILLMARK_REACHED is on, the programs that are no tests count the functions too, and tell nobody.

// NOLINTBEGIN: the compiler's names
extern "C" void __sanitizer_cov_8bit_counters_init(char* /*start*/, char* /*stop*/) {}
extern "C" void __sanitizer_cov_pcs_init(const char* /*start*/, const char* /*stop*/) {}
// NOLINTEND
