#include "command/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <sstream>

#include "platform/locale/user_locale.h"

namespace tessary::command {

using foundation::knownNames;

namespace {

constexpr const char* version = "tessary-widgets " TESSARY_VERSION;

/// Thrown inside this file for a value that does not parse; leaves it as a UsageFault.
struct BadWord {
    std::string option{};
    std::string word{};
    std::string expected{};
};

/// Words to be understood once all of them are known.
using Word = std::optional<std::string>;
struct Words {
    std::string widget{};
    Word container{}, info{}, request{}, pin{}, at{}, locale{}, timeZone{};
    Word family{}, entry{}, scale{}, format{}, output{};
    std::vector<std::string> ids{};
    bool preview{}, noPin{}, json{}, redacted{}, watch{}, requireSandbox{};
};

template <class Case>
Case parsedCase(const std::string& option, const Word& word, Case otherwise) {
    if (!word) return otherwise;
    const auto value = foundation::parse<Case>(*word);
    if (!value) throw BadWord{option, *word, "one of " + knownNames<Case>()};
    return *value;
}

template <class Number>
Number parsedNumber(const std::string& option, const Word& word, Number least, Number most,
                    Number otherwise, const std::string& expected) {
    if (!word) return otherwise;
    Number value{};
    const char* end = word->data() + word->size();
    const auto [stop, error] = std::from_chars(word->data(), end, value);
    const bool inRange = value >= least && value <= most;  // false for no number, too
    if (error != std::errc{} || stop != end || !inRange) throw BadWord{option, *word, expected};
    return value;
}

template <class Parse>
auto parsedText(const std::string& option, const Word& word, Parse parse,
                const std::string& expected) -> decltype(parse(*word)) {
    if (!word) return std::nullopt;
    auto value = parse(*word);
    if (!value) throw BadWord{option, *word, expected};
    return value;
}

std::optional<std::filesystem::path> parsedPath(const std::string& option, const Word& word) {
    if (!word) return std::nullopt;
    if (word->empty()) throw BadWord{option, *word, "a path"};
    return *word;
}

PinChoice pinChoice(const Words& words) {
    if (words.pin && words.noPin)
        throw UsageFault{"--pin '" + *words.pin + "' and --no-pin: expected one of them"};
    if (words.noPin) return {PinChoice::Kind::none, {}};
    if (words.pin) return {PinChoice::Kind::identifier, *words.pin};
    return {};
}

RequestOptions requestOptions(const Words& words) {
    using locale::UserLocale;
    return {
        .container = parsedPath("--container", words.container),
        .info = parsedPath("--info", words.info),
        .request = parsedCase("--request", words.request, widgets::Request::timeline),
        .preview = words.preview,
        .pin = pinChoice(words),
        .at = parsedText("--at", words.at, foundation::Date::parse,
                         "seconds since 1970 (1731772840.5) or a time as in 2024-11-16T16:00:40Z"),
        .locale = parsedText("--locale", words.locale, UserLocale::parseIdentifier,
                             "a locale such as en_US or de_DE"),
        .timeZone = parsedText("--time-zone", words.timeZone, UserLocale::parseTimeZone,
                               "a time zone such as UTC or Europe/Berlin"),
    };
}

PictureOptions pictureOptions(const Words& words) {
    constexpr std::size_t mostEntries = 1000;
    PictureOptions options;
    options.family = parsedCase("--family", words.family, options.family);
    options.entry = parsedNumber<std::size_t>("--entry", words.entry, 0, mostEntries, 0,
                                              "the number of an entry, from 0");
    options.redacted = words.redacted;
    options.scale = parsedNumber<double>("--scale", words.scale, 1, 4, options.scale,
                                         "a number of pixels per point from 1 to 4");
    if (words.output != "-") options.output = parsedPath("--output", words.output);
    const auto byEnding = options.output ? extension::formatOf(*options.output) : std::nullopt;
    options.format = parsedCase("--format", words.format, byEnding.value_or(options.format));
    return options;
}

/// The words from last to first, as the parser takes them; "--name=" as "--name" and an empty
/// value, because it would take the next word for the value.
std::vector<std::string> reversed(const std::vector<std::string>& words) {
    std::vector<std::string> result;
    for (const std::string& word : words) {
        const bool empty = word.starts_with("--") && word.find('=') == word.size() - 1;
        result.push_back(empty ? word.substr(0, word.size() - 1) : word);
        if (empty) result.emplace_back();
    }
    std::reverse(result.begin(), result.end());
    return result;
}

/// The grammar: which commands there are and which options each takes.
class Grammar {
public:
    Grammar() {
        app_.set_help_flag("-h,--help", "Show this help");
        app_.set_version_flag("--version", version, "Show the version");
        app_.require_subcommand(0, 1);  // a second one's name is a word like any other
        app_.footer(
            "WIDGET is alarms, alarm (the alarm pin widget), metric, or a kind identifier.\n"
            "Exit status: 0 done, 1 the output could not be made or written, 2 a wrong call.\n\n"
            "  tessary-widgets render alarms --family medium -o alarms.png\n"
            "  tessary-widgets timeline alarms --json");
        list_ = command("list", "Show the widgets of the bundle");
        timeline_ = command("timeline", "Ask a widget's provider and show its entries");
        render_ = command("render", "Ask a widget's provider and render one entry");
        pins_ = command("pins", "Show what a pin widget can be configured with");
        serve_ = command("serve", "Answer requests, a line of JSON each, until the input ends");
        for (CLI::App* asking : {timeline_, render_}) addRequestOptions(asking);
        addPinsOptions();
        addServeOptions();
        for (CLI::App* printing : {list_, timeline_, pins_})
            printing->add_flag("--json", words_.json, "Print JSON");
        addPictureOptions(render_);
        addCheck();
    }

    Call parse(const std::vector<std::string>& words) {
        if (words.empty()) return UsageFault{"no command given: expected " + commandNames()};
        if (const auto fault = wrongStart(words.front())) return *fault;
        try {
            app_.parse(reversed(words));
            return call();
        } catch (const BadWord& bad) {
            return UsageFault{bad.option + ": '" + bad.word + "' is not " + bad.expected};
        } catch (const UsageFault& fault) {
            return fault;
        } catch (const CLI::ParseError& error) {
            return explained(error);
        }
    }

private:
    std::optional<UsageFault> wrongStart(const std::string& word) const {
        if (!word.starts_with('-') && !known(word))
            return UsageFault{"unknown command '" + word + "': expected " + commandNames()};
        const bool informs = word == "-h" || word == "--help" || word == "--version";
        if (word.starts_with('-') && !informs)
            return UsageFault{"unexpected option '" + word +
                              "' before a command: expected --help, --version, or one of " +
                              commandNames()};
        return std::nullopt;
    }

    CLI::App* command(const std::string& name, const std::string& description) {
        CLI::App* sub = app_.add_subcommand(name, description);
        sub->set_help_flag("-h,--help", "Show this help");
        sub->set_version_flag("--version", version, "Show the version");
        sub->allow_extras();
        commands_.push_back(name);
        return sub;
    }

    void option(CLI::App* sub, const std::string& group, const std::string& names, Word& into,
                const std::string& value, const std::string& description) {
        sub->add_option_function<std::string>(
               names, [&into](const std::string& word) { into = word; }, description)
            ->type_name(value)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)  // refuseRepeats() counts them
            ->group(group);
    }

    void addWidget(CLI::App* sub, const std::string& description) {
        sub->add_option("WIDGET", words_.widget, description)->type_name("");
    }
    void addMomentOptions(CLI::App* sub, const std::string& group) {
        option(sub, group, "--at", words_.at, "TIME",
               "The current time: seconds since 1970 or RFC 3339 (default: the clock's)");
        option(sub, group, "--locale", words_.locale, "NAME",
               "The user's locale (default: the environment's)");
        option(sub, group, "--time-zone", words_.timeZone, "NAME",
               "The user's time zone (default: the environment's)");
    }
    void addPlaceOptions(CLI::App* sub, const std::string& group) {
        option(sub, group, "--container", words_.container, "DIR",
               "The shared container, the folder that holds widgets/ (default: the group's own)");
        option(sub, group, "--info", words_.info, "FILE",
               "The information dictionary, a JSON object (default: the installed one)");
    }

    void addRequestOptions(CLI::App* sub) {
        const std::string group = "Request";
        addWidget(sub, "alarms, alarm, metric, or a kind identifier");
        addPlaceOptions(sub, group);
        option(sub, group, "--request", words_.request, "WHICH",
               "placeholder, snapshot or timeline (default: timeline)");
        sub->add_flag("--preview", words_.preview, "Ask as a gallery does")->group(group);
        option(sub, group, "--pin", words_.pin, "ID",
               "The pin that the widget is configured with (default: the first of the file)");
        sub->add_flag("--no-pin", words_.noPin, "The widget is configured with no pin")
            ->group(group);
        addMomentOptions(sub, group);
    }

    void addCheck() {
        check_ =
            command("check", "Say what keeps the widgets from their data, or that nothing does");
        check_->footer(
            "Exit status: 0 all three files are usable, 1 something keeps a widget from its data,\n"
            "2 a wrong call.");
        addPlaceOptions(check_, "Request");
        addMomentOptions(check_, "Request");
        check_->add_flag("--json", words_.json, "Print JSON");
        check_->add_flag("--watch", words_.watch,
                         "Say it again whenever a file changes; with --json, an object a line");
    }

    void addServeOptions() {
        addPlaceOptions(serve_, "Surroundings");
        addMomentOptions(serve_, "Surroundings");
        serve_->add_flag("--require-sandbox", words_.requireSandbox,
                         "Refuse to run where the kernel cannot shut every door");
    }

    void addPinsOptions() {
        const std::string group = "Request";
        addWidget(pins_, "alarm, metric, or a kind identifier");
        addPlaceOptions(pins_, group);
        pins_
            ->add_option_function<std::string>(
                "--id", [this](const std::string& id) { words_.ids.push_back(id); },
                "Show the entity of this identifier instead; may be given several times")
            ->type_name("ID")
            ->trigger_on_parse()
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
            ->group(group);
    }

    void addPictureOptions(CLI::App* sub) {
        const std::string group = "Picture";
        option(sub, group, "--family", words_.family, "SIZE", "small or medium (default: small)");
        option(sub, group, "--entry", words_.entry, "N",
               "Which entry of the timeline, from 0 (default: 0)");
        sub->add_flag("--redacted", words_.redacted, "As a placeholder, as on a locked screen")
            ->group(group);
        option(sub, group, "--scale", words_.scale, "S", "Pixels per point, 1 to 4 (default: 2)");
        option(sub, group, "--format", words_.format, "FORMAT",
               "png, svg, pdf, json or text (default: from the output's ending, else png)");
        option(sub, group, "-o,--output", words_.output, "FILE",
               "Where it goes (default: standard output; pictures not to a terminal)");
    }

    bool known(const std::string& word) const {
        return std::find(commands_.begin(), commands_.end(), word) != commands_.end();
    }
    std::string commandNames() const {
        std::string names;
        for (const std::string& name : commands_) names += (names.empty() ? "" : ", ") + name;
        return names;
    }

    Call call() const {
        for (const CLI::App* sub : app_.get_subcommands())
            if (!sub->remaining().empty()) return unexpected(*sub);
        for (const CLI::App* sub : app_.get_subcommands()) refuseRepeats(*sub);
        if (check_->parsed())
            return CheckCommand{requestOptions(words_), words_.json, words_.watch};
        if (list_->parsed()) return ListCommand{words_.json};
        if (serve_->parsed()) return ServeCommand{requestOptions(words_), words_.requireSandbox};
        if (words_.widget.empty())
            return UsageFault{
                "no widget given: expected alarms, alarm, metric, or a kind identifier"};
        if (timeline_->parsed())
            return TimelineCommand{words_.widget, requestOptions(words_), words_.json};
        if (pins_->parsed())
            return PinsCommand{words_.widget, requestOptions(words_), words_.ids, words_.json};
        return RenderCommand{words_.widget, requestOptions(words_), pictureOptions(words_)};
    }

    static void refuseRepeats(const CLI::App& sub) {
        for (const CLI::Option* option : sub.get_options()) {
            const bool isRefused =
                option->get_expected_max() == 1 && !option->get_trigger_on_parse();
            if (!isRefused || option->count() < 2) continue;
            throw UsageFault{
                option->get_name() + " is given " +
                (option->count() == 2 ? "twice" : std::to_string(option->count()) + " times") +
                ", expected once"};
        }
    }

    static UsageFault unexpected(const CLI::App& sub) {
        const std::string word = sub.remaining().front();
        if (!word.starts_with('-'))
            return {"unexpected word '" + word + "' behind " + sub.get_name()};
        std::string options;
        for (const CLI::Option* option : sub.get_options())
            if (!option->get_lnames().empty())
                options += (options.empty() ? "--" : ", --") + option->get_lnames().front();
        return {"unknown option '" + word + "' of " + sub.get_name() + ": expected " + options};
    }

    Call explained(const CLI::ParseError& error) {
        std::ostringstream text;
        if (error.get_exit_code() == 0) {
            app_.exit(error, text, text);
            return Information{text.str()};
        }
        std::string message = error.what();
        std::replace(message.begin(), message.end(), '\n', ' ');
        return UsageFault{message};
    }

    CLI::App app_{"Shows the state of CloudWatch alarms and metrics as desktop widgets.",
                  "tessary-widgets"};
    Words words_{};
    std::vector<std::string> commands_{};
    CLI::App* list_{};
    CLI::App* timeline_{};
    CLI::App* render_{};
    CLI::App* pins_{};
    CLI::App* serve_{};
    CLI::App* check_{};
};

}  // namespace

Call parseCommandLine(const std::vector<std::string>& words) { return Grammar{}.parse(words); }

}  // namespace tessary::command
