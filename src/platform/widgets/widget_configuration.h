// A widget as a host sees it: its declared data, and its provider and views behind one call.
//
//     const WidgetConfiguration widget =
//         configuration("com.example.alarms", AlarmsProvider{source}, alarmsWidget)
//             .configurationDisplayName("Alarms firing")
//             .description("What is in ALARM.")
//             .supportedFamilies({WidgetFamily::systemSmall});
//     widget.answer(Request::timeline, {}).entries.front().view()        // what the host renders
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/foundation/json_writing.h"
#include "platform/intents/entity.h"
#include "platform/views/view.h"
#include "platform/widgets/provider_context.h"
#include "platform/widgets/timeline.h"

namespace tessary::widgets {

/// An entry of any widget, ready for a host. Copies are cheap: they share what the provider read,
/// which never changes.
struct WidgetEntry {
    Date date{};
    /// Made anew at each call; reads size, locale and moment (this date) when it is rendered.
    std::function<views::View()> view{};
    /// Prints the display state.
    std::function<void(foundation::JSONWriter&)> describe{};
};

/// What a host gets; a placeholder or a snapshot is a single entry without a policy.
struct WidgetTimeline {
    std::vector<WidgetEntry> entries{};
    std::optional<ReloadPolicy> policy{};
};

struct WidgetConfiguration {
    std::string kind{};  ///< identifies the widget to hosts, byte for byte
    std::string displayName{};
    std::string text{};  ///< the description shown in a gallery
    std::vector<WidgetFamily> families{};
    /// What the user configures; none where there is nothing to configure.
    std::optional<intents::WidgetConfigurationIntent> intent{};
    std::function<WidgetTimeline(Request, const ProviderContext&)> answer{};

    WidgetConfiguration configurationDisplayName(std::string name) const {
        return with(&WidgetConfiguration::displayName, std::move(name));
    }
    WidgetConfiguration description(std::string said) const {
        return with(&WidgetConfiguration::text, std::move(said));
    }
    WidgetConfiguration supportedFamilies(std::vector<WidgetFamily> supported) const {
        return with(&WidgetConfiguration::families, std::move(supported));
    }
    WidgetConfiguration configuredBy(intents::WidgetConfigurationIntent choices) const {
        return with(&WidgetConfiguration::intent, std::move(choices));
    }

private:
    template <class Value>
    WidgetConfiguration with(Value WidgetConfiguration::*member,
                             std::type_identity_t<Value> value) const {
        WidgetConfiguration result = *this;
        result.*member = std::move(value);
        return result;
    }
};

/// A widget of a provider and what shows its entries. `Provider` has an `Entry`, which has a `date`
/// and a `display` that prints as JSON, and `placeholder(context)` and `snapshot(context)`, which
/// return one, and `timeline(context)`, which returns a Timeline<Entry>.
template <class Provider>
WidgetConfiguration configuration(std::string kind, Provider provider,
                                  views::View (*content)(typename Provider::Entry));

// ---- How it is done --------------------------------------------------------------------------

template <class Entry>
WidgetTimeline readied(Timeline<Entry> timeline, views::View (*content)(Entry)) {
    WidgetTimeline result{{}, timeline.policy};
    const auto at = std::make_shared<const std::function<Entry(Date)>>(std::move(timeline.entry));
    for (const Date date : timeline.dates)
        result.entries.push_back(
            {date, [at, date, content] { return content((*at)(date)); },
             [at, date](foundation::JSONWriter& json) { json.value((*at)(date).display); }});
    return result;
}

template <class Provider>
Timeline<typename Provider::Entry> asked(const Provider& provider, Request request,
                                         const ProviderContext& context) {
    switch (request) {
        case Request::placeholder: return single(provider.placeholder(context));
        case Request::snapshot: return single(provider.snapshot(context));
        case Request::timeline: break;
    }
    return provider.timeline(context);
}

template <class Provider>
WidgetConfiguration configuration(std::string kind, Provider provider,
                                  views::View (*content)(typename Provider::Entry)) {
    WidgetConfiguration widget;
    widget.kind = std::move(kind);
    widget.answer = [provider = std::move(provider), content](Request request,
                                                              const ProviderContext& context) {
        return readied(asked(provider, request, context), content);
    };
    return widget;
}

}  // namespace tessary::widgets
