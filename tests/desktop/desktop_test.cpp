#include "desktop/desktop.h"

#include <gtest/gtest.h>

#include "desktop/client/fake_extension.h"
#include "desktop/places/sample_kinds.h"
#include "support/table.h"

namespace tessary::desktop {
namespace {

using namespace places;

constexpr double never = std::numeric_limits<double>::infinity();

/// What the desktop asks for and shows, in words.
std::string told;

void tell(const std::string& what) { told += (told.empty() ? "" : ", ") + what; }

std::string unlessSmall(const std::string& family) { return family == "small" ? "" : " " + family; }

struct Asked : client::FakeExtension {
    void ask(const client::Request& request, Answer answer) override {
        FakeExtension::ask(request, std::move(answer));
        tell(request.request + (request.widget ? " " + shortName(*request.widget) : "") +
             (request.pin ? "=" + *request.pin : "") +
             (request.scale.value_or(1) == 2 ? " x2" : "") +
             unlessSmall(request.family.value_or("small")) +
             (request.redacted.value_or(false) ? " redacted" : ""));
    }
    void prepare() override { tell("prepare"); }
    void moveTo(const std::optional<std::string>& zone) override {
        tell("to " + zone.value_or("?"));
    }
};

/// Tells what is other than before; it is known by its name.
struct ShownCard : windows::Card {
    explicit ShownCard(Events theirs) : events{std::move(theirs)} { last = this; }
    ~ShownCard() override { tell(name + " goes"); }

    void place(const Monitor& monitor, const Place& place, const Family& family) override {
        const auto at = " at " + (monitor.name ? monitor.name->connector + " " : "") +
                        describe(place) + unlessSmall(family.name) +
                        (family.size.width == 999 ? " of old" : "");
        if (at != std::exchange(lies, at)) tell(name + at);
    }
    void leave() override { tell(name + " leaves"), lies = ""; }
    void setKind(const Kind& kind) override { name = kind.displayName; }
    int scale() const override { return perPoint; }
    void show(const client::Entry& entry) override {
        if (entry.text != std::exchange(text, entry.text)) tell(name + " shows " + text);
    }
    void openLink() override { tell(name + " opens"); }

    static inline ShownCard* last{};
    Events events;
    std::string name{}, lies{}, text{};
    int perPoint{1};
};

struct ShownDialogs : dialogs::Dialogs {
    void openGallery() override { tell("gallery"); }
    void openEditor(const PlacedWidget& widget) override {
        tell("editor " + std::to_string(widget.number));
    }
    void keep(const std::vector<PlacedWidget>& widgets) override {
        std::string all;
        for (const auto& widget : widgets) all += " " + std::to_string(widget.number);
        if (all != std::exchange(kept, all)) tell("editors of" + all);
    }
    void reload() override { tell("dialogs"); }
    std::string kept{};
};

class Stage {
public:
    /// A call of the program, or a word and what it is about.
    void happens(const std::string& row) {
        std::istringstream in{row};
        std::vector<std::string> words{std::istream_iterator<std::string>{in}, {}};
        if (row.starts_with("--")) return carry(parseCall(words, "/").value());
        const auto signs = desktop_.signs();
        const std::vector<std::string> rest{words.begin() + 1, words.end()};
        const std::map<std::string, std::function<void()>> happenings{
            {"time", [&] { pass(std::stod(rest.at(0))); }},
            {"clock", signs.clock.clockSet},
            {"stirring", signs.files.stirring},
            {"files", signs.files.changed},
            {"zone", signs.zone.changed},
            {"locked", [&] { signs.lock(true); }},
            {"unlocked", [&] { signs.lock(false); }},
            {"monitors", [&] { plug(rest), signs.monitors(); }},
            {"old",
             [&] {
                 widgets_ = {
                     {1, sampleKinds[0].kind, {"small", {999, 164}}, {}, *parsePlace("0,0")}};
                 desktop_.show(widgets_);
             }},
            {"kinds", [&] { extension_.answer({.kinds = sampleKinds}); }},
            {"pins", [&] { extension_.answer({.pins = pins(rest)}); }},
            {"error", [&] { extension_.answer({.error = "no"}); }},
            {"timeline", [&] { extension_.answer({.timeline = timeline(rest)}); }},
            {"rescaled",
             [&] { ShownCard::last->perPoint = 2, ShownCard::last->events.scaleChanged(); }},
            {"closed", [&] { ShownCard::last->lies = "", ShownCard::last->events.closed(); }},
            {"moved", [&] { ShownCard::last->events.moved(*parsePlace("40,60")); }},
            {"small", [&] { ShownCard::last->events.familyChosen({"small"}); }},
            {"edit", [&] { ShownCard::last->events.editChosen(); }},
            {"remove", [&] { ShownCard::last->events.removeChosen(); }},
            {"add", [&] { ShownCard::last->events.addChosen(); }},
            {"quit", [&] { ShownCard::last->events.quitChosen(); }},
        };
        happenings.at(words.at(0))();
    }

private:
    /// As the program does it.
    void carry(const Command& command) {
        switch (command.action) {
            case Action::quit: return tell("quit");
            case Action::gallery: return desktop_.openGallery();
            case Action::openEditor: return desktop_.openEditor(command.number);
            case Action::openLink: return desktop_.openLink(command.number);
            case Action::reload: return desktop_.reload();
            default: carryOut(command, widgets_, monitors_, sampleKinds), desktop_.show(widgets_);
        }
    }
    void pass(double now) {
        now_ = now;
        if (wake_ <= now_) wake_ = never, desktop_.signs().clock.due();
    }
    void plug(const std::vector<std::string>& names) {
        monitors_.clear();
        for (const auto& name : names) monitors_.push_back({MonitorName{.connector = name}});
        if (names.empty()) monitors_.emplace_back();
    }
    /// An entry at each date but the last, when to ask again.
    static client::Timeline timeline(const std::vector<std::string>& dates) {
        client::Timeline all{.after = std::stod(dates.back())};
        for (const auto& date : dates)
            all.entries.push_back({.date = std::stod(date), .text = date});
        all.entries.pop_back();
        return all;
    }
    static client::Pins pins(const std::vector<std::string>& ids) {
        return {.initial = ids.empty() ? std::nullopt : std::optional<client::Pin>{{.id = ids[0]}}};
    }

    double now_{100}, wake_{never};
    std::vector<PlacedWidget> widgets_{};
    std::vector<Monitor> monitors_{{.name = MonitorName{.connector = "A"}, .area = {1000, 500}}};
    Asked extension_{};
    ShownDialogs dialogs_{};
    Desktop desktop_{{.extension = extension_,
                      .dialogs = dialogs_,
                      .openCard = [](auto events) { return std::make_unique<ShownCard>(events); },
                      .monitors = [this] { return monitors_; },
                      .now = [this] { return now_; },
                      .wake =
                          [this](double moment) {
                              wake_ = moment;
                              tell((std::ostringstream{} << "wake " << moment).str());
                          },
                      .zone = [] { return "Asia/Tokyo"; },
                      .note = [](const std::string& words) { tell("note: " + words); }},
                     [this](const Command& command) { carry(command); }};
};

/// Rows of what happens and what is asked and shown then.
void expectStory(const char* rows) {
    Stage stage;
    for (const auto& row : table(rows)) {
        told.clear();
        stage.happens(row[0]);
        EXPECT_EQ(told, row.size() > 1 ? row[1] : "") << row[0];
    }
}

TEST(Desktop, AsksAndShowsInTime) {
    expectStory(R"(
        --add alarms --position 20,20  | editors of 1, list, timeline alarms, alarms at A 20,20
        kinds                          |
        timeline 160 100 399.93        | Firing shows 100, wake 160
        time 159                       |
        time 160                       | Firing shows 160, wake 400
        time 399                       |
        time 400                       | timeline alarms, wake inf
        timeline 399 400               | Firing shows 399, wake 405
        time 404                       |
        time 405                       | timeline alarms, wake inf
        error                          | note: widget 1: no, wake 705
        time 704                       |
        time 705                       | timeline alarms, wake inf
        timeline 700 730 900           | Firing shows 700, wake 730
        clock                          | timeline alarms, dialogs, wake 730
        files                          | dialogs
        timeline 701 901               | timeline alarms
        timeline 702 902               | Firing shows 702, wake 902
        stirring                       | prepare
        zone                           | to Asia/Tokyo, timeline alarms, dialogs
        timeline 703 903               | Firing shows 703, wake 903
        locked                         | timeline alarms redacted, dialogs
        timeline 704 904               | Firing shows 704, wake 904
        unlocked                       | timeline alarms, dialogs
        timeline 705 905               | Firing shows 705, wake 905
        rescaled                       | timeline alarms x2
        error                          | note: widget 1: no, wake 1005
        clock                          | timeline alarms x2, dialogs, wake inf
    )");
}

TEST(Desktop, FollowsTheUser) {
    expectStory(R"(
        stirring                       |
        --add alarms --position 20,20  | editors of 1, list, timeline alarms, alarms at A 20,20
        kinds                          |
        timeline 100 900               | Firing shows 100, wake 900
        --add metric --family medium   | editors of 1 2, timeline metric medium, pins metric, metric at A 20,-116 medium
        timeline 90 900                | metric shows 90, wake 900
        pins                           |
        files                          | timeline alarms, timeline metric medium, pins metric, dialogs
        timeline 100 900               | wake 900
        timeline 90 900                | wake 900
        pins cpu                       | timeline metric=cpu medium
        timeline 99 901                | metric shows 99, wake 900
        moved                          | metric at A 40,60 medium
        small                          | timeline metric=cpu, metric at A 40,60
        edit                           | editor 2
        --edit 1                       |
        --edit 3                       |
        --open 2                       | metric opens
        --open 3                       |
        add                            | gallery
        quit                           | quit
        --reload                       | timeline alarms, dialogs
        --remove 1                     | Firing goes, editors of 2
        timeline 97 901                | timeline metric=cpu
        timeline 96 902                |
        monitors B                     | metric leaves
        monitors A B                   | metric at A 40,60
        closed                         | metric at A 40,60
        monitors                       | metric leaves
        monitors A                     | metric at A 40,60
        remove                         | metric goes, editors of
        clock                          | dialogs, wake inf
    )");
}

TEST(Desktop, KnowsOfWidgetsWhatTheListTells) {
    expectStory(R"(
        old                            | editors of 1, list, timeline alarms, alarms at A 0,0 of old
        error                          |
        --add metric --position 20,20  | editors of 1 2, list, timeline metric, metric at A 20,20
        --add clock --position 60,20   | editors of 1 2 3, list, timeline time large, time at A 60,20 large
        --edit 2                       |
        error                          | note: widget 1: no, wake 400
        kinds                          | pins metric, timeline alarms, Firing at A 0,0
        --edit 2                       | editor 2
        --edit 3                       |
        edit                           |
        --edit 3 --family small        |
    )");
}

}  // namespace
}  // namespace tessary::desktop
