#include "desktop/desktop.h"

#include <gtest/gtest.h>

#include "desktop/client/fake_extension.h"
#include "desktop/places/sample_kinds.h"
#include "support/golden.h"

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
             (request.redacted.value_or(false) ? " redacted" : "") +
             (request.family && request.display.value_or(true) ? " with its state" : ""));
    }
    void prepare() override { tell("prepare"); }
    void hurry() override { tell("hurry"); }
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
    void setTrouble(const std::string& why) override {
        if (why != std::exchange(trouble, why)) tell(name + " says '" + why + "'");
    }
    foundation::Result<void> openLink() override { return tell(name + " opens"), noProgram; }

    static inline const foundation::Fault noProgram{"no program"};

    static inline ShownCard* last{};
    Events events;
    std::string name{}, lies{}, text{}, trouble{};
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
    void setBegun(bool now) override {
        if (now != std::exchange(begun, now)) tell(now ? "no hint" : "hint");
    }
    void reload() override { tell("dialogs"); }
    void setTrouble(const std::string& why) override {
        if (why != std::exchange(trouble, why)) tell("dialogs say '" + why + "'");
    }
    bool begun{true};
    std::string trouble{};
    std::string kept{};
};

class Stage {
public:
    /// A call of the program, or a word and what it is about.
    void happens(const std::string& row) {
        const auto words = tessary::words(row);
        if (row.starts_with("--")) return carry(parseCall(words, "/").value());
        const auto signs = desktop_.signs();
        const std::vector<std::string> rest{words.begin() + 1, words.end()};
        const std::map<std::string, std::function<void()>> happenings{
            {"time", [&] { pass(std::stod(rest.at(0))); }},
            {"clock", signs.clock.clockSet},
            {"bare", [&] { begun_ = false; }},
            {"begun", [&] { begun_ = true; }},
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
            {"now", [&] { now_ = std::stod(rest.at(0)); }},
            {"fails",
             [&] {
                 signs.trouble({std::stoi(rest.at(0)), "it is ill"});
             }},
            {"click", [&] { ShownCard::last->events.clicked(); }},
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
            case Action::openLink:
                if (const auto opened = desktop_.openLink(command.number); !opened)
                    tell(opened.fault().message());
                return;
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
    static protocol::Suggestions pins(const std::vector<std::string>& ids) {
        return {.initial = ids.empty() ? std::nullopt : std::optional<client::Pin>{{.id = ids[0]}}};
    }

    bool begun_{true};
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
                      .begun = [this] { return begun_; },
                      .note = [](const std::string& words) { tell("note: " + words); }},
                     [this](const Command& command) { carry(command); }};
};

/// Of what happens, and of what is asked and shown then.
void expectStory(const std::string& name) {
    Stage stage;
    expectTranscript(name, [&](const std::string& happening) {
        told.clear();
        stage.happens(happening);
        return told.empty() ? "nothing" : told;
    });
}

TEST(Desktop, AsksAndShowsInTime) { expectStory("in_time.txt"); }

TEST(Desktop, TellsWhatCouldNotBeBroughtUpToDate) { expectStory("in_trouble.txt"); }

TEST(Desktop, FollowsTheUser) { expectStory("the_user.txt"); }

TEST(Desktop, KnowsOfWidgetsWhatTheListTells) { expectStory("the_list.txt"); }

}  // namespace
}  // namespace tessary::desktop
