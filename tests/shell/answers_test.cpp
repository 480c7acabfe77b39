// What every widget answers a host, told once for the three of them.
#include <cmath>
#include <gtest/gtest.h>
#include <map>

#include "extension/widget_lookup.h"
#include "shell/tessary_widgets.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::shell {
namespace {

using foundation::Date;
using widgets::Request;
using widgets::WidgetEntry;

std::string described(const WidgetEntry& entry) {
    foundation::JSONWriter json;
    entry.describe(json);
    return std::move(json).text();
}

/// How long after the example's update it is shown, and as much as tells its state from others.
std::string told(const WidgetEntry& entry, const WidgetConfiguration& widget) {
    const auto text = described(entry);
    const auto says = [&](const char* words) { return text.find(words) != text.npos; };
    std::string told = std::to_string(std::lround(entry.date - exampleUpdated)) + ' ';
    told += text.substr(9, text.find('"', 9) - 9);  // its case
    if (says("\"stale\":")) told += says("\"stale\":true") ? " stale" : " fresh";
    if (const auto at = text.find("\"#"); at != text.npos) told += " " + text.substr(at, 4);
    const auto sample = widget.answer(Request::placeholder, {}).entries.at(0);
    return told + (text == described(sample) ? ", the sample\n" : "\n");
}

std::string told(const std::vector<intents::AppEntity>& entities) {
    std::string told;
    for (const auto& [id, name, detail] : entities)
        told += " [" + id + "|" + name + "|" + detail + "]";
    return told + '\n';
}

std::string offered(const intents::WidgetConfigurationIntent& intent) {
    const auto initial = intent.defaultResult();
    return "suggested" + told(intent.suggestedEntities()) + "default" +
           (initial ? told({*initial}) : "\n") + "asked" +
           told(intent.entities({"a", "x", "b", "A", "x", "e\u0301", ""}));
}

/// In place of what each widget reads.
std::string file(const std::string& name, bool isOfPins) {
    if (name == "usable") return isOfPins ? examplePins({"b", "a", "b", "\u00E9"}) : exampleAlarms;
    if (name == "later")
        return isOfPins ? examplePins({"a"}, 2) : replaced(exampleAlarms, ": 1,", ": 2,");
    return std::map<std::string, std::string>{{"empty", examplePins({})}, {"broken", "{"}}[name];
}

/// A case is a widget and what its file holds, what is asked and for which place, the entity that
/// was chosen, and how long after the file's update.
std::string answered(const std::string& line) {
    const auto asked = words(line);
    const Container container;
    double time = exampleUpdated.seconds + std::stod(asked.at(5)), tick = 0;
    int reads = 0;
    snapshot::Source source = container.source();
    source.clock = [&] { return Date{std::exchange(time, time + tick)}; };
    source.read = [&](const auto& path) { return ++reads, system::readFile(path); };
    const auto widget = TessaryWidgets{source}.body().at(std::stoul(asked[0]));
    const auto put = [&](const std::string& text) {
        for (const char* name : {"alarms", "metrics", "alarm-pins"}) container.put(name, text);
    };
    put(file(asked[1], widget.intent.has_value()));
    if (asked[2] == "entities") return offered(*widget.intent);
    const auto request = *foundation::parse<Request>(asked[2]);
    auto choice = asked[4] == "-" ? std::nullopt : std::optional{unescaped(asked[4])};
    if (choice == "default") choice = extension::configured(widget, request, {});
    tick = asked[2] == "timeline" ? 7 : 0;
    const auto answer = widget.answer(request, {{}, asked[3] == "gallery", choice});
    put("");  // what was read stays
    std::string all = std::to_string(reads) + " read\n";
    for (const WidgetEntry& entry : answer.entries) all += told(entry, widget);
    if (!answer.policy) return all;
    return all + "next after " + std::to_string(std::lround(answer.policy->after - exampleUpdated));
}

TEST(Answers, AreOfOneReadingEachJudgedAtItsOwnDate) { expectTranscript("answers.txt", answered); }

/// Compared one with the other, these would take minutes.
TEST(Answers, FindTheFirstOfManyPinsAmongMany) {
    std::vector<std::string> composed, decomposed;
    for (int i = 0; i < 40'000; ++i) {
        composed.push_back("\u00E9" + std::to_string(i / 2));
        decomposed.push_back("e\u0301" + std::to_string(i));
    }
    const Container container;
    container.put("metrics", examplePins(composed));
    const auto found = TessaryWidgets{container.source()}.body().at(1).intent->entities(decomposed);
    for (std::size_t i = 0; i < 20'000; ++i) ASSERT_EQ(found[i].name, "#" + std::to_string(2 * i));
}

}  // namespace
}  // namespace tessary::shell
