#include "feed/links/link.h"

#include <initializer_list>
#include <map>
#include <optional>

#include "feed/aws/endpoint.h"
#include "platform/foundation/letters.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/visible_text.h"

namespace tessary::links {

using foundation::Fault;
using foundation::Result;

namespace {

using Members = std::map<std::string, std::string>;

/// What stands before the separator, which is cut off along with it; all where there is none.
std::string_view cut(std::string_view& text, char separator) {
    const auto at = text.find(separator);
    const auto front = text.substr(0, at);
    text.remove_prefix(at == text.npos ? text.size() : at + 1);
    return front;
}

Result<std::string> decoded(std::string_view part) {
    auto text = foundation::percentDecoded(part);
    if (!text) return Fault{"'" + foundation::visible(part) + "' is wrongly encoded"};
    if (text->empty()) return Fault{"a word is empty"};
    return *std::move(text);
}

/// "profile=prod&region=us-east-1", each of the names once and no other.
Result<Members> membersOf(std::string_view query, std::initializer_list<std::string_view> names) {
    Members members;
    for (const auto name : names) members.emplace(name, "");
    for (bool isLast = false; !isLast;) {
        isLast = query.find('&') == query.npos;
        auto member = cut(query, '&');
        const auto known = members.find(std::string{cut(member, '=')});
        if (known == members.end()) return Fault{"an unknown member behind the '?'"};
        if (!known->second.empty()) return Fault{"'" + known->first + "' is given twice"};
        auto value = decoded(member);
        if (!value) return value.fault();
        known->second = *std::move(value);
    }
    for (const auto& [name, value] : members)
        if (value.empty()) return Fault{"'" + name + "' is missing"};
    return members;
}

Result<Link> alarmLink(std::string_view name, std::string_view query) {
    return decoded(name).andThen([&](const std::string& alarm) {
        return membersOf(query, {"profile", "region"})
            .andThen([&](const Members& members) -> Result<Link> {
                const auto& region = members.at("region");
                if (!aws::isRegion(region))
                    return Fault{"'" + foundation::visible(region) + "' is no region"};
                return Link{AlarmLink{alarm, members.at("profile"), region}};
            });
    });
}

Result<Link> metricLink(std::string_view query) {
    return membersOf(query, {"pin"}).transform([](const Members& members) {
        return Link{MetricLink{members.at("pin")}};
    });
}

/// What stands behind the scheme.
Result<Link> read(std::string_view rest) {
    constexpr std::string_view alarm = "alarms/";
    if (rest == "alarms") return Link{AlarmsLink{}};
    const auto path = cut(rest, '?');
    if (path == "cloudwatch/metric") return metricLink(rest);
    if (path.starts_with(alarm) && path.find('/', alarm.size()) == path.npos)
        return alarmLink(path.substr(alarm.size()), rest);
    return Fault{"expected alarms, alarms/NAME or cloudwatch/metric behind 'tessary://'"};
}

}  // namespace

Result<Link> parseLink(std::string_view text) {
    constexpr std::string_view scheme = "tessary://";
    constexpr std::size_t longest = std::size_t{16} << 10U;
    const auto refused = [&](const std::string& why) {
        return Fault{"'" + foundation::visible(text) + "' is no link of a widget: " + why};
    };
    if (text.size() > longest) return refused("it is longer than any");
    if (foundation::inSmallLetters(text.substr(0, scheme.size())) != scheme)
        return refused("it does not begin with tessary://");
    if (text.find('#') != text.npos) return refused("it has a fragment");
    auto link = read(text.substr(scheme.size()));
    return link ? link : refused(link.fault().message());
}

}  // namespace tessary::links
