#include "command/commands.h"

#include <array>
#include <exception>
#include <iostream>
#include <unistd.h>

#include "command/change_wait.h"
#include "command/check_report.h"
#include "extension/descriptions.h"
#include "extension/serve.h"
#include "extension/widget_host.h"
#include "extension/widget_lookup.h"
#include "platform/drawing/machine_fonts.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/output.h"

namespace tessary::command {

using foundation::JSONWriter;
using foundation::name;
using foundation::visible;
using widgets::WidgetConfiguration;
using widgets::WidgetEntry;
using widgets::WidgetTimeline;

namespace {

constexpr int done = 0;
constexpr int failed = 1;
constexpr int wrongCall = 2;

constexpr std::size_t anyLength = std::string::npos;

/// One line, whatever the words of the call hold that it names.
int report(int status, const std::string& message) {
    std::cerr << "tessary-widgets: " << visible(message, anyLength) << '\n';
    return status;
}

int statusOf(const foundation::Result<void>& result) {
    return result ? done : report(failed, result.fault().message());
}

int print(const std::string& text) { return statusOf(system::writeStandardOutput(text)); }

template <class Record>
std::string asJSON(const Record& record) {
    return foundation::toJSON(record, JSONWriter::Style::indented) + "\n";
}

std::string listAsText(const std::vector<WidgetConfiguration>& widgets) {
    std::string text;
    for (const WidgetConfiguration& widget : widgets) {
        const auto sizes = foundation::joined(widget.families, ", ", name<widgets::WidgetFamily>);
        if (!text.empty()) text += '\n';
        text += widget.displayName + "\n  " + widget.text + "\n  kind           " + widget.kind +
                "\n  configuration  " +
                (widget.intent ? "intent \"" + widget.intent->title + "\"" : "static") +
                "\n  sizes          " + sizes + "\n";
    }
    return text;
}

/// In parts, as it may be long.
int printTimeline(const std::string& kind, widgets::Request request,
                  const WidgetTimeline& timeline) {
    foundation::Result<void> printed;
    const auto say = [&](const std::string& part) {
        if (printed) printed = system::writeStandardOutput(part);
    };
    JSONWriter json{JSONWriter::Style::indented, say};
    json.object([&] {
        json.member("kind", kind).member("request", name(request));
        json.key("entries").array([&] {
            for (const WidgetEntry& entry : timeline.entries) {
                json.object([&] {
                    json.member("date", entry.date).key("display");
                    entry.describe(json);
                });
            }
        });
        json.member("policy", extension::policyOf(timeline));
    });
    say(json.text() + "\n");
    return statusOf(printed);
}

/// One line an entry: when, and what its medium size says.
std::string timelineAsText(const std::string& kind, const WidgetTimeline& timeline,
                           const locale::UserLocale& locale) {
    PictureOptions options{.locale = locale};
    options.family = widgets::WidgetFamily::systemMedium;
    options.format = extension::PictureFormat::text;
    std::string text;
    for (const WidgetEntry& entry : timeline.entries) {
        std::string said = picture(kind, entry, options);
        said.pop_back();
        text += locale.timestamp(entry.date) + "  ";
        for (const char c : said) text += c == '\n' ? std::string{" | "} : std::string{c};
        text += '\n';
    }
    if (timeline.policy)
        text += "next timeline after " + locale.timestamp(timeline.policy->after) + "\n";
    return text;
}

std::string entitiesAsText(const std::vector<intents::AppEntity>& entities) {
    std::string text;
    for (const intents::AppEntity& entity : entities) {
        text += visible(entity.id, anyLength) + "\t" + visible(entity.name, anyLength);
        if (!entity.detail.empty()) text += "\t" + visible(entity.detail, anyLength);
        text += '\n';
    }
    return text;
}

std::string pinsAsJSON(const intents::WidgetConfigurationIntent& intent,
                       const std::vector<std::string>& ids) {
    return ids.empty() ? asJSON(extension::suggestions(intent))
                       : asJSON(extension::entities(intent, ids));
}

std::string unknownWidget(const std::string& word) {
    const auto shortName = [](const auto& widget) { return extension::shortName(widget.kind); };
    return "unknown widget '" + word + "': expected alarms, alarm, metric, or a kind identifier" +
           foundation::didYouMean(word, shell::TessaryWidgets{}.body(), shortName);
}

struct Runner {
    int operator()(const Information& information) const { return print(information.text); }

    int operator()(const ListCommand& command) const {
        return print(command.json ? asJSON(extension::bundleList())
                                  : listAsText(shell::TessaryWidgets{}.body()));
    }

    int operator()(const ServeCommand& command) const {
        return statusOf(extension::serve(command));
    }

    int operator()(const TimelineCommand& command) const {
        const RequestOptions& request = command.request;
        return answered(
            command.widget, request, {},
            [&](const std::string& kind, const WidgetTimeline& timeline) {
                if (command.json) return printTimeline(kind, request.request, timeline);
                return print(timelineAsText(kind, timeline, extension::localeOf(request)));
            });
    }

    int operator()(const PinsCommand& command) const {
        const auto widget =
            extension::findWidget(command.widget, extension::sourceOf(command.request));
        if (!widget || !widget->intent)
            return report(
                wrongCall,
                "'" + command.widget +
                    "' is no widget of a pin: expected alarm, metric, or a kind identifier" +
                    foundation::didYouMean(command.widget, std::array{"alarm", "metric"}));
        const intents::WidgetConfigurationIntent& intent = *widget->intent;
        if (command.json) return print(pinsAsJSON(intent, command.ids));
        return print(entitiesAsText(command.ids.empty() ? intent.suggestedEntities()
                                                        : intent.entities(command.ids)));
    }

    int operator()(const RenderCommand& command) const {
        PictureOptions options = command.picture;
        if (!options.output && extension::isPicture(options.format) && isatty(STDOUT_FILENO) != 0)
            return report(wrongCall, "a picture is not for a terminal: name a file with --output");
        options.locale = extension::localeOf(command.request);
        return answered(command.widget, command.request, options.family,
                        [&](const std::string& kind, const WidgetTimeline& timeline) {
                            return rendered(kind, timeline, options);
                        });
    }

    int operator()(const CheckCommand& command) const {
        const int drawing = statusOf(drawing::haveFonts());
        return std::max(drawing, command.watch ? checkedOnEachChange(command) : checked(command));
    }

private:
    static int checked(const CheckCommand& command) {
        const Inspection found = inspect(extension::sourceOf(command.request));
        const int status = told(found, command);
        return status == done ? exitStatus(found, command.strictness) : status;
    }

    /// In a stream of objects each takes one line.
    static int told(const Inspection& found, const CheckCommand& command) {
        using Style = JSONWriter::Style;
        if (command.json)
            return print(asJSON(found, command.watch ? Style::compact : Style::indented));
        return print(asText(found, extension::localeOf(command.request)));
    }

    /// The three files and the dictionary, as far as they have a place now.
    static std::vector<std::filesystem::path> watchedFiles(
        const snapshot::Source& source, const std::optional<std::filesystem::path>& dictionary) {
        std::vector<std::filesystem::path> files;
        for (const std::string_view name : snapshot::fileNames)
            if (auto file = source.locate(name).file; !file.empty()) files.push_back(file);
        if (dictionary) files.push_back(*dictionary);
        return files;
    }

    static int checkedOnEachChange(const CheckCommand& command) {
        heedEndSignals();
        const snapshot::Source source = extension::sourceOf(command.request);
        std::optional<Inspection> last;
        for (Woken woken = Woken::change; woken == Woken::change;) {
            system::PathWatch watch{watchedFiles(source, command.request.info)};
            if (!watch.sight()) return report(failed, watch.sight().fault().message());
            const Inspection found = inspect(source);
            if (!last || !foundTheSame(*last, found)) {
                if (last && !command.json) print("\n");
                if (const int status = told(found, command); status != done) return status;
                last = found;
            }
            woken = waitForChange(watch);
            if (woken == Woken::readerGone)
                return report(failed, "cannot write standard output: its reader has gone");
        }
        return exitStatus(*last, command.strictness);
    }

    static int rendered(const std::string& kind, const WidgetTimeline& timeline,
                        const PictureOptions& options) {
        const std::size_t count = timeline.entries.size();
        if (options.entry >= count)
            return report(wrongCall, "--entry: '" + std::to_string(options.entry) +
                                         "' is not the number of an entry, from 0 to " +
                                         std::to_string(count - 1));
        const std::string bytes = picture(kind, timeline.entries[options.entry], options);
        if (!options.output) return print(bytes);
        return statusOf(system::writeFile(*options.output, bytes));
    }

    /// Asks the widget as the request says and hands on what it answers.
    template <class Use>
    static int answered(const std::string& word, const RequestOptions& options,
                        widgets::WidgetFamily family, const Use& use) {
        const auto widget = extension::findWidget(word, extension::sourceOf(options));
        if (!widget) return report(wrongCall, unknownWidget(word));
        if (!widget->intent && options.pin != PinChoice{})
            return report(wrongCall, "--pin and --no-pin are not for '" + word +
                                         "': expected alarm, metric, or their kind identifiers");
        const auto choice = extension::configured(*widget, options.request, options.pin);
        return use(widget->kind,
                   widget->answer(options.request, {family, options.preview, choice}));
    }
};

/// Whether the call's information dictionary is one, where it names one.
foundation::Result<void> givenDictionary(const Call& call) {
    return std::visit(
        [](const auto& command) -> foundation::Result<void> {
            if constexpr (requires { command.request; })
                return extension::givenDictionary(command.request);
            return {};
        },
        call);
}

}  // namespace

int run(const foundation::Result<Call>& call) {
    if (!call) return report(wrongCall, call.fault().message());
    try {
        if (const auto given = givenDictionary(*call); !given)
            return report(wrongCall, given.fault().message());
        return std::visit(Runner{}, *call);
    } catch (const std::exception& error) {
        return report(failed, error.what());
    }
}

}  // namespace tessary::command
