// A widget as a host sees it: its declared data, and its provider and views behind one call.
//
//     const WidgetConfiguration widget =
//         StaticConfiguration<AlarmsEntry>("com.example.alarms", AlarmsProvider{}, alarmsEntryView)
//             .configurationDisplayName("Alarms firing")
//             .description("What is in ALARM.")
//             .supportedFamilies({WidgetFamily::systemSmall});
//     widget.answer(Request::timeline, {}, {}).entries.front().view()    // what the host renders
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

/// An entry of any widget, ready for a host. Copies are cheap: they share what the provider made,
/// which never changes.
class WidgetEntry {
public:
    /// `Entry` has a `date` and a `display` that prints as JSON; `content` makes its view.
    template <class Entry>
    WidgetEntry(Entry entry, views::View (*content)(const Entry&))
        : date(entry.date), made_(std::make_shared<Made<Entry>>(std::move(entry), content)) {}

    Date date{};
    /// Made anew at each call; reads its family when it is rendered.
    views::View view() const { return made_->view(); }
    /// Prints the display state.
    void describe(foundation::JSONWriter& json) const { made_->describe(json); }

private:
    struct Base {
        virtual ~Base() = default;
        virtual views::View view() const = 0;
        virtual void describe(foundation::JSONWriter& json) const = 0;
    };
    template <class Entry>
    struct Made final : Base {
        Made(Entry e, views::View (*c)(const Entry&)) : entry(std::move(e)), content(c) {}
        views::View view() const override { return content(entry); }
        void describe(foundation::JSONWriter& json) const override { json.value(entry.display); }
        Entry entry;
        views::View (*content)(const Entry&);
    };
    std::shared_ptr<const Base> made_;
};

struct WidgetConfiguration {
    std::string kind{};  ///< identifies the widget to hosts, byte for byte
    std::string displayName{};
    std::string text{};  ///< the description shown in a gallery
    std::vector<WidgetFamily> families{};
    /// What the user configures; none where there is nothing to configure.
    std::optional<intents::WidgetConfigurationIntent> intent{};
    /// Asks the provider, with the user's choice for a widget that has an intent.
    std::function<Timeline<WidgetEntry>(Request, const ProviderContext&,
                                        const std::optional<intents::AppEntity>& choice)>
        answer{};

    WidgetConfiguration configurationDisplayName(std::string name) const;
    WidgetConfiguration description(std::string text) const;
    WidgetConfiguration supportedFamilies(std::vector<WidgetFamily> families) const;
};

/// A widget without anything to configure. `Provider` has `placeholder(context)`, which returns an
/// Entry, `getSnapshot(context, completion)` and `getTimeline(context, completion)`, which call the
/// completion once before they return, with an Entry and with a Timeline<Entry>. An Entry has a
/// `date` and a `display` that prints as JSON.
template <class Entry, class Provider>
WidgetConfiguration StaticConfiguration(std::string kind, Provider provider,
                                        views::View (*content)(const Entry&));

/// A widget that the user configures. `Provider` has a `Configuration`, made of the user's choice,
/// `placeholder(context)`, `snapshot(configuration, context)` and `timeline(configuration,
/// context)`.
template <class Entry, class Provider>
WidgetConfiguration AppIntentConfiguration(std::string kind,
                                           intents::WidgetConfigurationIntent intent,
                                           Provider provider, views::View (*content)(const Entry&));

// ---- How it is done --------------------------------------------------------------------------

template <class Entry>
Timeline<WidgetEntry> readied(Timeline<Entry> timeline, views::View (*content)(const Entry&)) {
    Timeline<WidgetEntry> result{{}, timeline.policy};
    for (Entry& entry : timeline.entries) result.entries.emplace_back(std::move(entry), content);
    return result;
}

template <class Entry, class Provider>
Timeline<Entry> asked(const Provider& provider, Request request, const ProviderContext& context) {
    Timeline<Entry> result;
    switch (request) {
        case Request::placeholder: result.entries = {provider.placeholder(context)}; break;
        case Request::snapshot:
            provider.getSnapshot(context,
                                 [&](Entry entry) { result.entries = {std::move(entry)}; });
            break;
        case Request::timeline:
            provider.getTimeline(context, [&](Timeline<Entry> made) { result = std::move(made); });
            break;
    }
    return result;
}

template <class Entry, class Provider>
WidgetConfiguration StaticConfiguration(std::string kind, Provider provider,
                                        views::View (*content)(const Entry&)) {
    WidgetConfiguration widget;
    widget.kind = std::move(kind);
    widget.answer = [provider, content](Request request, const ProviderContext& context,
                                        const auto&) {
        return readied(asked<Entry>(provider, request, context), content);
    };
    return widget;
}

template <class Entry, class Provider>
Timeline<Entry> asked(const Provider& provider, Request request, const ProviderContext& context,
                      const typename Provider::Configuration& configuration) {
    switch (request) {
        case Request::placeholder: return {{provider.placeholder(context)}, {}};
        case Request::snapshot: return {{provider.snapshot(configuration, context)}, {}};
        case Request::timeline: break;
    }
    return provider.timeline(configuration, context);
}

template <class Entry, class Provider>
WidgetConfiguration AppIntentConfiguration(std::string kind,
                                           intents::WidgetConfigurationIntent intent,
                                           Provider provider,
                                           views::View (*content)(const Entry&)) {
    WidgetConfiguration widget;
    widget.kind = std::move(kind);
    widget.intent = std::move(intent);
    widget.answer = [provider, content](Request request, const ProviderContext& context,
                                        const std::optional<intents::AppEntity>& choice) {
        return readied(asked<Entry>(provider, request, context, {choice}), content);
    };
    return widget;
}

}  // namespace tessary::widgets
