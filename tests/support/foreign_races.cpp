// Libraries that are not built with ThreadSanitizer: it does not see the atomic operations by which
// they keep their threads apart.
extern "C" const char* __tsan_default_suppressions() {
    return "race:libharfbuzz.so\n"
           "race:libpango*\n"
           "race:libfontconfig.so\n"
           "race:libfreetype.so\n"
           "race:libglib-2.0.so\n"
           "race:^_cairo_\n"
           "race:^cairo_\n";
}
