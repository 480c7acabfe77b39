#include "desktop/desktop.h"

#include <gtest/gtest.h>

#include "desktop/client/fake_extension.h"
#include "support/table.h"

namespace tessary::desktop {
namespace {

using namespace places;

/// What the desktop asks for and shows, in words.
std::string told;

void tell(const std::string& what) { told += (told.empty() ? "" : ", ") + what; }

const std::vector<client::WidgetKind> kinds{
    {.kind = *kindNamed("alarms"), .displayName = "Alarms firing"}};

class Asked : public client::FakeExtension {
public:
    void ask(const client::Request& request, Answer answer) override {
        FakeExtension::ask(request, std::move(answer));
        auto words = request.request;
        if (!request.widget.empty()) words += " " + shortName(request.widget);
        if (request.pin) words += "=" + *request.pin;
        if (request.scale != 1) words += " x" + std::to_string(request.scale);
        tell(words + (request.family == "medium" ? " medium" : "") +
             (request.redacted ? " redacted" : ""));
    }
    void prepare() override { tell("prepare"); }
    void renew() override { tell("renew"); }
};

struct ShownCard : Card {
    explicit ShownCard(Events theirs) : events{std::move(theirs)} { all.push_back(this); }
    ShownCard(const ShownCard&) = delete;
    ShownCard& operator=(const ShownCard&) = delete;
    ~ShownCard() override {
        tell(name + " goes");
        std::erase(all, this);
    }

    void place(const Monitor& monitor, const Place& place, Family family) override {
        const auto at = (monitor.name ? monitor.name->connector + " " : "") + describe(place) +
                        (family == Family::medium ? " medium" : "");
        if (at != std::exchange(lies, at)) tell(name + " at " + at);
    }
    void leave() override { tell(name + " leaves"), lies = "nowhere"; }
    void setName(const std::string& given) override { name = given; }
    int scale() const override { return perPoint; }
    void show(const client::Entry& entry) override {
        if (entry.text != std::exchange(text, entry.text)) tell(name + " shows " + text);
    }
    void openLink() override { tell(name + " opens"); }

    static inline std::vector<ShownCard*> all{};  ///< in the order of their coming
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
        std::string kept;
        for (const auto& widget : widgets) kept += " " + std::to_string(widget.number);
        if (kept != std::exchange(before, kept)) tell("editors of" + kept);
    }
    void reload() override { tell("dialogs"); }
    std::string before{};
};

class Stage {
public:
    void happens(const std::string& row) {
        std::istringstream words{row};
        std::string first;
        words >> first;
        const auto signs = desktop_.signs();
        const std::map<std::string, std::function<void()>> happenings{
            {"show", [&] { desktop_.show(widgets(words)); }},
            {"at", [&] { at(words); }},
            {"card", [&] { card(words); }},
            {"monitors", [&] { plug(words); }},
            {"clock", signs.clock.clockSet},
            {"stirring", signs.files.stirring},
            {"files", signs.files.changed},
            {"zone", signs.zone.changed},
            {"lock", [&] { signs.lock(true); }},
            {"unlock", [&] { signs.lock(false); }},
            {"reload", [&] { desktop_.reload(); }},
            {"gallery", [&] { desktop_.openGallery(); }},
            {"editor", [&] { desktop_.openEditor(number(words)); }},
            {"open", [&] { desktop_.openLink(number(words)); }},
            {"kinds", [&] { extension_.answer({.kinds = kinds}); }},
            {"pins", [&] { answerPins(words); }},
            {"error", [&] { extension_.answer({.error = "no"}); }},
            {"timeline", [&] { answerTimeline(words); }},
        };
        happenings.at(first)();
    }

private:
    static int number(std::istream& words) {
        int number{};
        words >> number;
        return number;
    }
    /// NUMBER KIND FAMILY POSITION MONITOR PIN, the last two a dash for none.
    static std::vector<PlacedWidget> widgets(std::istringstream& words) {
        std::vector<PlacedWidget> all;
        std::string kind, family, position, monitor, pin;
        for (int n; words >> n >> kind >> family >> position >> monitor >> pin;) {
            auto place = *parsePlace(position);
            if (monitor != "-") place.monitor = MonitorName{.connector = monitor};
            all.push_back({n, *kindNamed(kind), *familyNamed(family), {}, place});
            if (pin != "-") all.back().pin = pin;
        }
        return all;
    }
    void at(std::istream& words) {
        words >> now_;
        if (wake_ <= now_) wake_ = 1e9, desktop_.signs().clock.due();
    }
    void plug(std::istream& words) {
        monitors_.clear();
        for (std::string name; words >> name;)
            monitors_.push_back({.name = MonitorName{.connector = name}});
        if (monitors_.empty()) monitors_.push_back({});
        desktop_.signs().monitors();
    }
    /// An entry at each date, until the last number's time.
    void answerTimeline(std::istream& words) {
        client::Timeline timeline;
        for (std::string date; words >> date;)
            timeline.entries.push_back({.date = std::stod(date), .text = date});
        timeline.after = timeline.entries.back().date;
        timeline.entries.pop_back();
        extension_.answer({.timeline = timeline});
    }
    void answerPins(std::istream& words) {
        client::Pins pins;
        for (std::string id; words >> id;) pins.initial = client::Pin{.id = id};
        extension_.answer({.pins = pins});
    }
    /// The number of a card in the order of their coming, and what happens to it.
    static void card(std::istream& words) {
        auto& card = *ShownCard::all.at(static_cast<std::size_t>(number(words)) - 1);
        const auto& events = card.events;
        std::string what;
        words >> what;
        if (what == "x2") card.perPoint = 2, events.scaleChanged();
        if (what == "closed") card.lies = "nowhere", events.closed();
        if (what == "moved") events.moved(*parsePlace("40,60"));
        if (what == "medium") events.familyChosen(Family::medium);
        if (what == "edit") events.editChosen ? events.editChosen() : tell("nothing to edit");
        if (what == "remove") events.removeChosen();
        if (what == "add") events.addChosen();
        if (what == "quit") events.quitChosen();
    }
    static void chosen(const Command& command) {
        const std::map<Action, std::string> names{
            {Action::edit, "edit"}, {Action::remove, "remove"}, {Action::quit, "quit"}};
        auto words = "chosen: " + names.at(command.action);
        if (command.number != 0) words += " " + std::to_string(command.number);
        if (command.pin) words += " =" + *command.pin;
        if (command.place) words += " " + describe(*command.place);
        if (command.family) words += std::string{" "} + nameOf(*command.family);
        tell(words);
    }

    double now_{100}, wake_{1e9};
    std::vector<Monitor> monitors_{{.name = MonitorName{.connector = "A"}}};
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
                              if (moment < 1e9) tell("wake " + std::to_string(moment).substr(0, 5));
                          },
                      .note = [](const std::string& words) { tell("note: " + words); }},
                     chosen};
};

/// Rows of what happens and what follows.
void expectStory(const char* text) {
    Stage stage;
    for (const auto& row : table(text)) {
        told.clear();
        stage.happens(row[0]);
        EXPECT_EQ(told, row.size() > 1 ? row[1] : "") << row[0];
    }
}

TEST(Desktop, AsksAndShowsInTime) {
    expectStory(R"(
        show 1 alarms small 20,20 A -  | editors of 1, list, timeline alarms, alarms at A 20,20
        kinds                          |
        timeline 100 160 399.93        | Alarms firing shows 100, wake 160.0
        at 159                         |
        at 160                         | Alarms firing shows 160, wake 400.0
        at 399                         |
        at 400                         | timeline alarms
        timeline 399 400               | Alarms firing shows 399, wake 405.0
        at 404                         |
        at 405                         | timeline alarms
        error                          | note: widget 1: no, wake 705.0
        at 704                         |
        at 705                         | timeline alarms
        timeline 700 730 900           | Alarms firing shows 700, wake 730.0
        clock                          | timeline alarms, dialogs, wake 730.0
        files                          | dialogs
        timeline 701 901               | timeline alarms
        timeline 702 902               | Alarms firing shows 702, wake 902.0
        stirring                       | prepare
        files                          | timeline alarms, dialogs
        at 800                         |
        zone                           | renew, dialogs
        timeline 702 902               | timeline alarms
        timeline 703 903               | Alarms firing shows 703, wake 903.0
        zone                           | renew, timeline alarms, dialogs
        timeline 704 904               | Alarms firing shows 704, wake 904.0
        lock                           | timeline alarms redacted, dialogs
        timeline 705 905               | Alarms firing shows 705, wake 905.0
        unlock                         | timeline alarms, dialogs
        timeline 706 906               | Alarms firing shows 706, wake 906.0
        card 1 x2                      | timeline alarms x2
        timeline 707 907               | Alarms firing shows 707, wake 907.0
        clock                          | timeline alarms x2, dialogs
    )");
}

TEST(Desktop, FollowsTheUser) {
    expectStory(R"(
        stirring                                                    |
        show 1 alarms small 20,20 A - 2 metric medium 20,220 A -    | editors of 1 2, list, timeline alarms, timeline metric medium, pins metric, alarms at A 20,20, metric at A 20,220 medium
        kinds                                                       |
        timeline 100 900                                            | Alarms firing shows 100, wake 900.0
        timeline 90 900                                             | metric shows 90, wake 900.0
        pins                                                        |
        files                                                       | timeline alarms, timeline metric medium, pins metric, dialogs
        timeline 100 900                                            | wake 900.0
        timeline 90 900                                             | wake 900.0
        pins cpu                                                    | chosen: edit 2 =cpu
        show 1 alarms small 20,20 A - 2 metric medium 20,220 A cpu  | timeline metric=cpu medium
        timeline 99 901                                             | metric shows 99, wake 900.0
        show 1 alarms small 40,20 A - 2 metric medium 20,220 A cpu  | Alarms firing at A 40,20
        show 1 alarms medium 40,20 A - 2 metric medium 20,220 A cpu | timeline alarms medium, Alarms firing at A 40,20 medium
        timeline 98 901                                             | Alarms firing shows 98, wake 901.0
        card 1 moved                                                | chosen: edit 1 40,60
        card 1 medium                                               | chosen: edit 1 medium
        card 1 edit                                                 | nothing to edit
        card 2 edit                                                 | editor 2
        card 1 remove                                               | chosen: remove 1
        card 1 add                                                  | gallery
        card 1 quit                                                 | chosen: quit
        editor 1                                                    |
        editor 2                                                    | editor 2
        editor 3                                                    |
        open 2                                                      | metric opens
        open 3                                                      |
        gallery                                                     | gallery
        reload                                                      | timeline alarms medium, timeline metric=cpu medium, dialogs
        show 2 metric medium 20,220 A cpu                           | Alarms firing goes, editors of 2
        timeline 97 901                                             |
        timeline 96 902                                             | metric shows 96, wake 902.0
        monitors B                                                  | metric leaves
        monitors A B                                                | metric at A 20,220 medium
        card 1 closed                                               | metric at A 20,220 medium
        monitors                                                    | metric leaves
        monitors A                                                  | metric at A 20,220 medium
        show 3 alarms small 20,20 - -                               | metric goes, editors of 3, timeline alarms, Alarms firing at A 20,20
        monitors B                                                  | Alarms firing at B 20,20
        show                                                        | Alarms firing goes, editors of
        clock                                                       | dialogs
    )");
}

}  // namespace
}  // namespace tessary::desktop
