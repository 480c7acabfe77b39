#include <csignal>
#include <vector>

#include "host/commands.h"

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is told by the write that meets it
    return tessary::host::run(tessary::host::parseCommandLine({argv + 1, argv + argc}));
}
