// For test programs that set type from the machine's fonts: libfontconfig loses a few patterns when
// it reads its configuration files, which the leak sanitizer would blame on the test.

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the sanitizer looks for
extern "C" const char* __lsan_default_suppressions();
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
