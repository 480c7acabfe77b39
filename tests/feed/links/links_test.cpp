#include "feed/links/console.h"
#include "feed/links/link.h"
#include "support/golden.h"

namespace tessary::links {
namespace {

/// Of a pin, which is named by the word that tells its region; of an alarm; of all alarms.
std::string page(const Console& console, const std::string& url) {
    const auto link = parseLink(unescaped(url));
    if (!link) return link.fault().message();
    const auto shown = [](const Console::Page& page) {
        return page ? *page : page.fault().message();
    };
    if (const auto* alarm = std::get_if<AlarmLink>(&*link)) return shown(console.alarm(*alarm));
    const auto* metric = std::get_if<MetricLink>(&*link);
    if (metric == nullptr) return shown(console.alarms({"corp", "eu-west-1"}));
    return shown(console.metric({.profile = "corp",
                                 .region = metric->pin,
                                 .namespace_ = "AWS/RDS",
                                 .name = "CPU \"&é\n",
                                 .dimensions = {{"A", "1"}, {"Db", "x/y"}}}));
}

TEST(Links, LeadToTheConsolesPages) {
    std::string config;
    expectTranscript("pages.txt", [&](const std::string& line) {
        if (!line.starts_with("config ")) {
            const aws::Profiles profiles{config, ""};
            return page(Console{profiles}, line);
        }
        config = replaced(line.substr(line.find(' ') + 1), " / ", "\n");
        return std::string{};
    });
}

}  // namespace
}  // namespace tessary::links
