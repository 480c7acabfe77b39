#include <clocale>
#include <csignal>

#include "desktop/application.h"

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is told by the write that meets it
    return tessary::desktop::run({argv + 1, argv + argc});
}
