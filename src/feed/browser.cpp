#include "feed/browser.h"

#include <cstdlib>

#include "feed/notes.h"
#include "platform/system/child.h"

namespace tessary::feed {

namespace {

/// The browser lives longer than this, and shows pages of all the world: it gets no secret. What
/// lets it come to the front is none.
system::Errand errandFor(const std::string& url) {
    constexpr const char* toFront = "XDG_ACTIVATION_TOKEN";
    system::Errand errand{.words = {"xdg-open", url},
                          .without = {"AWS_*KEY*", "*TOKEN*", "NOTIFY_SOCKET", "WATCHDOG_*"}};
    if (const char* const token = std::getenv(toFront))
        errand.with.push_back(toFront + ('=' + std::string{token}));
    return errand;
}

}  // namespace

int showPage(const std::string& url) {
    const auto ended = system::runAttached(errandFor(url));
    if (ended && ended->status == 0 && ended->signal == 0) return done;
    complain(!ended               ? ended.fault().message()
             : ended->signal != 0 ? "xdg-open was ended by signal " + std::to_string(ended->signal)
                                  : "xdg-open ended with status " + std::to_string(ended->status));
    complain("the page is " + url);
    return ended && ended->status != 0 ? ended->status : failed;
}

}  // namespace tessary::feed
