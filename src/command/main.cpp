#include <csignal>

#include "command/commands.h"

int main(int argc, char** argv) {
    // A closed pipe, and a file that may not become larger, are told by the write that meets them.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    return tessary::command::run(tessary::command::parseCommandLine({argv + 1, argv + argc}));
}
