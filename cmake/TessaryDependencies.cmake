# Everything comes from Debian's packages; docs/dependencies.md says what each is for.
find_package(PkgConfig REQUIRED)
find_package(RapidJSON REQUIRED)
find_package(ICU 72 REQUIRED COMPONENTS i18n uc data)
pkg_check_modules(PANGO REQUIRED IMPORTED_TARGET pangoft2 harfbuzz fontconfig)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo cairo-ft cairo-pdf)
pkg_check_modules(PIXMAN REQUIRED IMPORTED_TARGET pixman-1 libpng zlib freetype2)
pkg_check_modules(DEFLATE REQUIRED IMPORTED_TARGET libdeflate)
if(TESSARY_DESKTOP)
  pkg_check_modules(GLIB REQUIRED IMPORTED_TARGET gio-unix-2.0)
  pkg_check_modules(GTK REQUIRED IMPORTED_TARGET gtk+-3.0 gtk-layer-shell-0)
  # -pthread, which glibc no longer needs, would keep the tests from the headers compiled for all.
  set_property(TARGET PkgConfig::GLIB PkgConfig::GTK PROPERTY INTERFACE_COMPILE_OPTIONS "")
endif()
if(TESSARY_FEED)
  pkg_check_modules(CURL REQUIRED IMPORTED_TARGET libcurl)
  pkg_check_modules(CRYPTO REQUIRED IMPORTED_TARGET libcrypto)
  pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET libsystemd)
  pkg_check_modules(TOML REQUIRED tomlplusplus)
endif()
if(NOT TESSARY_TESTS STREQUAL "none")
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()
if(TESSARY_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()

# ICU, Cairo, libseccomp and the C++ library are linked into the program itself: their thousands of names would
# else be looked up at every start, and Cairo would bring the X11 libraries, which nothing here calls
# (docs/dependencies.md has the figures).
find_library(TESSARY_CAIRO_ARCHIVE libcairo.a REQUIRED)
find_library(TESSARY_SECCOMP_ARCHIVE libseccomp.a REQUIRED)
find_library(TESSARY_ICU_I18N_ARCHIVE libicui18n.a REQUIRED)
find_library(TESSARY_ICU_UC_ARCHIVE libicuuc.a REQUIRED)
find_library(TESSARY_ICU_DATA_ARCHIVE libicudata.a REQUIRED)

add_library(tessary_seccomp INTERFACE)
target_link_libraries(tessary_seccomp INTERFACE "${TESSARY_SECCOMP_ARCHIVE}")

add_library(tessary_icu INTERFACE)
target_link_libraries(tessary_icu INTERFACE "${TESSARY_ICU_I18N_ARCHIVE}" "${TESSARY_ICU_UC_ARCHIVE}"
                                            "${TESSARY_ICU_DATA_ARCHIVE}")

add_library(tessary_cairo INTERFACE)
target_include_directories(tessary_cairo SYSTEM INTERFACE ${CAIRO_INCLUDE_DIRS})
target_link_libraries(tessary_cairo INTERFACE "${TESSARY_CAIRO_ARCHIVE}" PkgConfig::PIXMAN
                                              PkgConfig::PANGO)
