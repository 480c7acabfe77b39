// The feed with less patience than people get, so that its faults are run through within a minute.
#include "feed/feed.h"

int main(int argc, char** argv) {
    return tessary::feed::run({argv + 1, argv + argc},
                              {.budget = 3, .call = 1.2, .pause = 0.05, .program = 4});
}
