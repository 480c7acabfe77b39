#include "feed/searching.h"

#include <algorithm>

#include "feed/aws/shell_words.h"
#include "feed/notes.h"
#include "feed/session.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/visible_text.h"

namespace tessary::feed {

using rounds::AlarmListing;
using rounds::MetricListing;

namespace {

constexpr std::size_t longestLine = 4000;  // cells

std::string lineOf(const rounds::ListedAlarm& alarm) {
    constexpr std::size_t longestState = 17;  // INSUFFICIENT_DATA
    std::string state = foundation::visible(alarm.state);
    state.resize(std::max(state.size(), longestState), ' ');
    return state + "  " + nameOf({alarm.profile, alarm.region}) + ": " +
           foundation::visible(alarm.name, longestLine);
}

std::string lineOf(const rounds::ListedMetric& metric) {
    return nameOf({metric.profile, metric.region}) + ": " +
           foundation::visible(typed(metric), longestLine);
}

const auto& itemsOf(const AlarmListing& listing) { return listing.alarms; }
const auto& itemsOf(const MetricListing& listing) { return listing.metrics; }

template <class Listing>
std::string linesOf(const Listing& listing) {
    std::string lines;
    for (const auto& item : itemsOf(listing))
        lines += lineOf(item) + (item.pinned ? "  (pinned)" : "") + "\n";
    return lines;
}

/// Listed, unless each of the places had a fault at once.
template <class Listing>
int told(const Listing& listing, std::size_t places, bool asJSON) {
    for (const auto& fault : listing.faults) complain(fault);
    if (listing.more) complain("there is more; a name or --region narrows it down");
    const auto json = [&] {
        return foundation::toJSON(listing, foundation::JSONWriter::Style::indented) + "\n";
    };
    const int status = printed(asJSON ? json() : linesOf(listing));
    const bool isAnswered = !itemsOf(listing).empty() || listing.faults.size() < places;
    return isAnswered ? status : failed;
}

/// Looks where the call says, and makes a listing of what is there.
template <class Listing, class Call, class Query, class Make>
int listing(const Call& call, const Query& query, const Make& make) {
    return inSession(call.given, [&](Session& session) {
        const auto places = session.places(call.where);
        if (!places) return told(Listing{.faults = {places.fault().message()}}, 1, call.json);
        const auto found = session.asker.search(session.plan.surroundings, *places, query);
        return told(make(found, session.plan.settings), places->size(), call.json);
    });
}

}  // namespace

std::string typed(const rounds::ListedMetric& metric) {
    std::string words = aws::shellWord(metric.namespace_) + ' ' + aws::shellWord(metric.name);
    for (const auto& [name, value] : metric.dimensions)
        words += ' ' + aws::shellWord(name + '=' + value);
    return words;
}

int list(const AlarmsCall& call) {
    return listing<AlarmListing>(call, aws::AlarmsQuery{},
                                 [&](const auto& found, const auto& known) {
                                     return rounds::listed(found, known, call.text);
                                 });
}

int list(const MetricsCall& call) {
    const aws::MetricsQuery query{
        .namespace_ = call.namespace_, .name = call.name, .recently = "PT3H"};
    return listing<MetricListing>(call, query, [](const auto& found, const auto& known) {
        return rounds::listed(found, known);
    });
}

}  // namespace tessary::feed
