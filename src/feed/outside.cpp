#include "feed/outside.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/system/child.h"

namespace tessary::feed {

namespace {

/// Where this program lies, or the one that has been put in its place.
std::string ownPath() {
    std::error_code ignored;
    auto path = std::filesystem::read_symlink("/proc/self/exe", ignored).string();
    constexpr std::string_view replaced = " (deleted)";
    if (path.ends_with(replaced)) path.resize(path.size() - replaced.size());
    return path;
}

/// Opens the link in a process that goes on by itself. A service has the manager start it, else the
/// browser would live, and die, in the service's cage.
system::Errand errandFor(const bus::Notifications::Click& click, bool isService) {
    const std::string token = "XDG_ACTIVATION_TOKEN=" + click.token;
    system::Errand errand;
    if (isService) {
        errand.words = {"systemd-run", "--user", "--collect", "--quiet"};
        if (!click.token.empty()) errand.words.push_back("--setenv=" + token);
        errand.words.emplace_back("--");
    } else if (!click.token.empty()) {
        errand.with = {token};
    }
    errand.words.insert(errand.words.end(), {ownPath(), "open", click.link});
    return errand;
}

/// Whoever works with what was opened is waited for elsewhere.
void start(const system::Errand& errand) {
    std::thread{[errand] {
        const auto ended = system::runAttached(errand);
        if (!ended) complain(ended.fault().message());
    }}.detach();
}

}  // namespace

Outside::Outside(rounds::Schedule& schedule, Notes& notes)
    : schedule_(schedule),
      sleep_([&] { schedule_.wake(signs::wakefulSeconds()); }),
      notifications_(
          {.open =
               [&](const bus::Notifications::Click& click) {
                   start(errandFor(click, manager_.isManaged()));
               },
           .tell = [&](const std::string& fault) { notes.tellFault("notifications", fault); }}) {}

void Outside::begin() {
    sleep_.tend();
    manager_.begin();
}

/// Seconds until something has to be done, whatever comes.
double Outside::patience() const {
    double seconds = schedule_.due() - signs::wakefulSeconds();
    for (const auto& limit : {sleep_.connection().wanted().seconds,
                              notifications_.connection().wanted().seconds, manager_.pause()})
        seconds = std::min(seconds, limit.value_or(seconds));
    return std::max(seconds, 0.0);
}

void Outside::wait(std::span<pollfd> events) {
    std::vector<pollfd> all{{network_.descriptor(), POLLIN, 0},
                            {jumps_.descriptor(), POLLIN, 0},
                            sleep_.connection().wanted().events,
                            notifications_.connection().wanted().events};
    const auto own = static_cast<std::ptrdiff_t>(all.size());
    all.insert(all.end(), events.begin(), events.end());
    if (::poll(all.data(), all.size(), static_cast<int>(std::ceil(patience() * 1000))) < 0) return;
    std::copy(all.begin() + own, all.end(), events.begin());
    if (all[0].revents != 0 && network_.hasCome()) schedule_.connect(signs::wakefulSeconds());
    if (all[1].revents != 0 && jumps_.haveCome()) schedule_.wake(signs::wakefulSeconds());
    sleep_.process();
    notifications_.process();
    manager_.live();
}

void Outside::show(const notices::Telling& telling) {
    for (const auto& matter : telling.over) notifications_.close(matter);
    for (const auto& notice : telling.notices) notifications_.show(notice);
}

void Outside::tend(const std::string& status) {
    manager_.tell(status);
    manager_.live();
    sleep_.tend();
    notifications_.tend();
}

}  // namespace tessary::feed
