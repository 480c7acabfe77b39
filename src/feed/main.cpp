#include <csignal>
#include <sys/prctl.h>

#include "feed/feed.h"

int main(int argc, char** argv) {
    // Keys are in the memory: nobody else looks into it, and no picture of it is left behind.
    ::prctl(PR_SET_DUMPABLE, 0);
    // A closed pipe, and a file that may not become larger, are told by the write that meets them.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    return tessary::feed::run({argv + 1, argv + argc});
}
