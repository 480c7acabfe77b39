// What the leak sanitizer is to pass over, in the tests and in the programs that they run.
#include <sys/prctl.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the sanitizer looks for
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n"  // loses patterns when it reads its configuration files
           "leak:libXrandr.so\n";     // GDK keeps what this tells of a monitor that went
}

/// It cannot look around behind the sandbox, which allows no such calls.
extern "C" int __lsan_is_turned_off();
extern "C" int __lsan_is_turned_off() { return ::prctl(PR_GET_SECCOMP) != 0 ? 1 : 0; }
// NOLINTEND(bugprone-reserved-identifier)
