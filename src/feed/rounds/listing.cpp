#include "feed/rounds/listing.h"

#include <algorithm>

#include "platform/foundation/letters.h"
#include "platform/foundation/visible_text.h"

namespace tessary::rounds {

namespace {

bool holds(const std::string& name, std::string_view text) {
    return foundation::inSmallLetters(name).find(foundation::inSmallLetters(text)) !=
           std::string::npos;
}

bool isOf(const settings::AlarmPin& pin, const ListedAlarm& alarm) {
    return pin.profile == alarm.profile && pin.region == alarm.region && pin.name == alarm.name;
}
bool isOf(const settings::MetricPin& pin, const ListedMetric& metric) {
    return pin.profile == metric.profile && pin.region == metric.region &&
           pin.namespace_ == metric.namespace_ && pin.name == metric.name &&
           pin.dimensions == metric.dimensions;
}

/// The id of its pin, or of the pin that `own` would be.
template <class Item, class Pin>
void putId(Item& item, const std::vector<Pin>& pins, const Pin& own) {
    const auto pin = std::ranges::find_if(pins, [&](const Pin& each) { return isOf(each, item); });
    item.pinned = pin != pins.end();
    item.id = item.pinned ? pin->id : settings::completed(own).id;
}

template <class Item, class Name>
void sortFrom(std::vector<Item>& items, std::size_t first, const Name& name) {
    std::ranges::stable_sort(items.begin() + static_cast<std::ptrdiff_t>(first), items.end(), {},
                             name);
}

template <class Listing, class Item>
void tellOf(Listing& listing, const std::vector<Finding<Item>>& findings) {
    listing.faults = faultsOf(findings);
    listing.more = std::ranges::any_of(findings, &Finding<Item>::isCut);
}

}  // namespace

AlarmListing listed(const std::vector<Finding<aws::DescribedAlarm>>& findings,
                    const settings::Settings& settings, std::string_view text) {
    AlarmListing listing;
    for (const auto& [place, alarms, isCut, authExpired, fault] : findings) {
        const auto first = listing.alarms.size();
        for (const auto& alarm : alarms) {
            if (!holds(alarm.name, text)) continue;
            ListedAlarm item{place.profile, place.region, alarm.name, alarm.state};
            putId(item, settings.alarms,
                  {.profile = place.profile, .region = place.region, .name = alarm.name});
            listing.alarms.push_back(std::move(item));
        }
        sortFrom(listing.alarms, first, &ListedAlarm::name);
    }
    tellOf(listing, findings);
    return listing;
}

MetricListing listed(const std::vector<Finding<aws::Metric>>& findings,
                     const settings::Settings& settings) {
    MetricListing listing;
    for (const auto& [place, metrics, isCut, authExpired, fault] : findings) {
        const auto first = listing.metrics.size();
        for (const auto& metric : metrics) {
            if (!metric.namespace_ || !metric.name) continue;
            ListedMetric item{place.profile, place.region, *metric.namespace_, *metric.name,
                              dimensionsOf(metric)};
            putId(item, settings.metrics,
                  {.profile = place.profile,
                   .region = place.region,
                   .namespace_ = item.namespace_,
                   .name = item.name,
                   .dimensions = item.dimensions});
            listing.metrics.push_back(std::move(item));
        }
        sortFrom(listing.metrics, first, &ListedMetric::id);
    }
    tellOf(listing, findings);
    return listing;
}

std::map<std::string, std::string> dimensionsOf(const aws::Metric& metric) {
    std::map<std::string, std::string> dimensions;
    if (metric.dimensions)
        for (const auto& [name, value] : *metric.dimensions) dimensions[name] = value;
    return dimensions;
}

Census census(const Finding<aws::DescribedAlarm>& finding, const Target& target) {
    Census census;
    for (const auto& alarm : finding.items) {
        if (target.leavesOut(alarm.name)) continue;
        ++census.all;
        if (alarm.state == "ALARM") ++census.firing;
    }
    return census;
}

template <class Item>
std::vector<std::string> faultsOf(const std::vector<Finding<Item>>& findings) {
    std::vector<std::string> faults;
    for (const auto& [place, items, isCut, authExpired, fault] : findings)
        if (fault)
            faults.push_back(foundation::visible(place.profile) + " · " +
                             foundation::visible(place.region) + ": " +
                             foundation::visible(*fault));
    return faults;
}

template std::vector<std::string> faultsOf(const std::vector<Finding<aws::DescribedAlarm>>&);
template std::vector<std::string> faultsOf(const std::vector<Finding<aws::Metric>>&);

}  // namespace tessary::rounds
