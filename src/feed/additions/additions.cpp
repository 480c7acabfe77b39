#include "feed/additions/additions.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <thread>

#include "feed/aws/endpoint.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"
#include "platform/system/output.h"

namespace tessary::additions {

namespace fs = std::filesystem;
using foundation::Fault;
using foundation::Result;

namespace {

/// What the settings would refuse as well; empty where it is all right.
std::string flawOf(const std::string& profile, const std::string& region, const std::string& name) {
    if (profile.empty() || name.empty()) return "a name is empty";
    return aws::isRegion(region) ? "" : "'" + foundation::visible(region) + "' is no region";
}
std::string flawOf(const settings::Watch& watch) {
    if (watch.regions.empty()) return "no region is watched";
    for (const auto& region : watch.regions)
        if (auto flaw = flawOf(watch.profile, region, "any"); !flaw.empty()) return flaw;
    return "";
}
std::string flawOf(const settings::AlarmPin& pin) {
    return flawOf(pin.id.empty() ? "" : pin.profile, pin.region, pin.name);
}
std::string flawOf(const settings::MetricPin& pin) {
    if (!settings::isPeriod(pin.period)) return std::to_string(pin.period) + " is no period";
    const bool isNamed = !pin.id.empty() && !pin.namespace_.empty() && !pin.statistic.empty();
    return flawOf(isNamed ? pin.profile : "", pin.region, pin.name);
}

/// The path of the first that is wrong, and why.
template <class Record>
std::string flawIn(const std::vector<Record>& records, const std::string& path) {
    for (std::size_t at = 0; at < records.size(); ++at)
        if (const auto flaw = flawOf(records[at]); !flaw.empty())
            return path + std::to_string(at) + ": " + flaw;
    return "";
}

std::string flawIn(const Additions& added) {
    for (const auto& flaw : {flawIn(added.watch, "/watch/"), flawIn(added.alarms, "/alarm/"),
                             flawIn(added.metrics, "/metric/")})
        if (!flaw.empty()) return flaw;
    return "";
}

/// The folder itself, since the file is replaced by each change.
Result<system::Descriptor> locked(const fs::path& folder) {
    std::error_code error;
    if (fs::create_directories(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
    if (error) return Fault{"cannot make " + folder.string() + ": " + error.message()};
    system::Descriptor lock{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    constexpr auto pause = std::chrono::milliseconds{20};
    constexpr int mostTries = 500;
    for (int tries = 0; tries < mostTries; ++tries) {
        if (::flock(lock.number(), LOCK_EX | LOCK_NB) == 0) return lock;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return Fault{"cannot lock " + folder.string() + ": " +
                         std::system_category().message(errno)};
        std::this_thread::sleep_for(pause);
    }
    return Fault{"another command does not end that changes " + folder.string()};
}

template <class Pin>
void add(std::vector<Pin>& pins, const std::vector<Pin>& more) {
    for (const Pin& pin : more)
        if (std::ranges::find(pins, pin.id, &Pin::id) == pins.end()) pins.push_back(pin);
}

}  // namespace

Result<Additions> load(const fs::path& file) {
    const auto text = system::readFile(file);
    if (!text && text.fault() == system::absent()) return Additions{};
    const auto refuse = [&](const std::string& why) {
        return Fault{file.string() + ": " + why + "; put it right, or take the file away"};
    };
    if (!text) return refuse(text.fault().message());
    auto added = foundation::decodeJSON<Additions>(*text);
    if (!added) return refuse(added.fault().message());
    if (const auto flaw = flawIn(*added); !flaw.empty()) return refuse(flaw);
    return *std::move(added);
}

Result<void> change(const fs::path& file, const std::function<Result<void>(Additions&)>& make) {
    const auto lock = locked(file.parent_path());
    if (!lock) return lock.fault();
    auto added = load(file);
    if (!added) return added.fault();
    const Additions before = *added;
    auto made = make(*added);
    if (!made || *added == before) return made;
    return system::saveFile(
        file, foundation::toJSON(*added, foundation::JSONWriter::Style::indented) + "\n");
}

settings::Settings merged(settings::Settings settings, const Additions& added) {
    settings.watch.insert(settings.watch.end(), added.watch.begin(), added.watch.end());
    add(settings.alarms, added.alarms);
    add(settings.metrics, added.metrics);
    return settings;
}

}  // namespace tessary::additions
