#include <csignal>

#include "command/commands.h"

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is told by the write that meets it
    return tessary::command::run(tessary::command::parseCommandLine({argv + 1, argv + argc}));
}
