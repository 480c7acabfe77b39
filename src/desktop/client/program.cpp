#include "desktop/client/program.h"

#include <glib.h>

#include "desktop/glib/handles.h"

namespace tessary::client {

using namespace glib;

std::string programOfOurs(const std::string& name) {
    const Text self{g_file_read_link("/proc/self/exe", nullptr)};
    const Text folder{g_path_get_dirname(self ? self.get() : "")};
    const Text beside{g_build_filename(folder.get(), name.c_str(), nullptr)};
    const bool isThere = g_file_test(beside.get(), G_FILE_TEST_IS_EXECUTABLE);
    return isThere ? beside.get() : name;
}

}  // namespace tessary::client
