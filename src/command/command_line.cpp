#include "command/command_line.h"

#include "platform/locale/user_locale.h"
#include "platform/system/options.h"

namespace tessary::command {

using namespace system;
using extension::PictureFormat;
using foundation::choices;
using foundation::Result;
using locale::UserLocale;
using widgets::Request;
using widgets::WidgetFamily;

namespace {

namespace option {

constexpr const char* general = "Options";  // for the rest each command has a title
constexpr const char* picture = "Picture";

constexpr Option help{"help", "", "Show this help", general, 'h', Use::alone};
constexpr Option version{"version", "", "Show the version", general, 'V', Use::alone};
constexpr Option json{"json", "", "Print JSON", general};
constexpr Option watch{
    "watch", "", "Say it again whenever a file changes; with --json, an object a line", general};
constexpr Option strict{"strict", "", "Exit with 1 where a note or a repetition is made, too",
                        general};
constexpr Option staleIsError{"stale-is-error", "",
                              "Exit with 1 where a widget calls its data old, too", general};
constexpr Option requireSandbox{"require-sandbox", "",
                                "Refuse to run where the kernel cannot shut every door", general};
constexpr Option container{
    "container", "DIR",
    "The shared container, the folder that holds widgets/ (default: the group's own)"};
constexpr Option info{"info", "FILE",
                      "The information dictionary, a JSON object (default: the installed one)"};
constexpr Option which{.name = "request",
                       .value = "WHICH",
                       .help = "(default: timeline)",
                       .choices = choices<Request>};
constexpr Option preview{"preview", "", "Ask as a gallery does"};
constexpr Option pin{"pin", "ID",
                     "The pin that the widget is configured with (default: the first of the file)"};
constexpr Option noPin{"no-pin", "", "The widget is configured with no pin"};
constexpr Option id{
    "id", "ID", "Show the entity of this identifier instead; may be given several times",
    "",   0,    Use::often};
constexpr Option at{"at", "TIME",
                    "The current time: seconds since 1970 or RFC 3339 (default: the clock's)"};
constexpr Option locale{"locale", "NAME", "The user's locale (default: the environment's)"};
constexpr Option timeZone{"time-zone", "NAME", "The user's time zone (default: the environment's)"};
constexpr Option family{.name = "family",
                        .value = "SIZE",
                        .help = "(default: small)",
                        .group = picture,
                        .choices = choices<WidgetFamily>};
constexpr Option entry{"entry", "N", "Which entry of the timeline, from 0 (default: 0)", picture};
constexpr Option redacted{"redacted", "", "As a placeholder, as on a locked screen", picture};
constexpr Option scale{"scale", "S", "Pixels per point, 1 to 4 (default: 2)", picture};
constexpr Option format{.name = "format",
                        .value = "FORMAT",
                        .help = "(default: from the output's ending, else png)",
                        .group = picture,
                        .choices = choices<PictureFormat>};
constexpr Option output{"output", "FILE",
                        "Where it goes (default: standard output; pictures not to a terminal)",
                        picture, 'o'};

constexpr Option ofProgram[] = {help, version};
constexpr Option ofList[] = {help, version, json};
constexpr Option ofTimeline[] = {help, version, container, info,   which,    preview,
                                 pin,  noPin,   at,        locale, timeZone, json};
constexpr Option ofRender[] = {help,  version,  container, info,   which,    preview,
                               pin,   noPin,    at,        locale, timeZone, family,
                               entry, redacted, scale,     format, output};
constexpr Option ofPins[] = {help, version, container, info, id, json};
constexpr Option ofServe[] = {help, version, container, info, at, locale, timeZone, requireSandbox};
constexpr Option ofCheck[] = {help,     version, container, info,   at,          locale,
                              timeZone, json,    watch,     strict, staleIsError};

}  // namespace option

constexpr const char* anyWidget = "alarms, alarm, metric, or a kind identifier";

constexpr Command commands[] = {
    {.name = "list",
     .purpose = "Show the widgets of the bundle",
     .options = option::ofList,
     .examples = "  tessary-widgets list\n"
                 "  tessary-widgets list --json"},
    {.name = "timeline",
     .purpose = "Ask a widget's provider and show its entries",
     .options = option::ofTimeline,
     .operand = "WIDGET",
     .operandHelp = anyWidget,
     .group = "Request",
     .examples = "  tessary-widgets timeline alarms\n"
                 "  tessary-widgets timeline metric --pin 'orders-db CPU' --json\n"
                 "  tessary-widgets timeline alarms --at 2024-11-16T16:00:40Z --locale de_DE"},
    {.name = "render",
     .purpose = "Ask a widget's provider and render one entry",
     .options = option::ofRender,
     .operand = "WIDGET",
     .operandHelp = anyWidget,
     .group = "Request",
     .examples = "  tessary-widgets render alarms --family medium -o alarms.png\n"
                 "  tessary-widgets render alarm --pin orders-db-cpu-high --scale 3 > pin.png\n"
                 "  tessary-widgets render alarms --format text"},
    {.name = "pins",
     .purpose = "Show what a pin widget can be configured with",
     .options = option::ofPins,
     .operand = "WIDGET",
     .operandHelp = "alarm, metric, or a kind identifier",
     .group = "Request",
     .examples = "  tessary-widgets pins alarm\n"
                 "  tessary-widgets pins metric --id 'orders-db CPU' --json"},
    {.name = "serve",
     .purpose = "Answer requests, a line of JSON each, until the input ends",
     .options = option::ofServe,
     .group = "Surroundings",
     .examples = "  echo '{\"id\": 1, \"request\": \"list\"}' | tessary-widgets serve\n"
                 "  tessary-widgets serve --require-sandbox"},
    {.name = "check",
     .purpose = "Say what keeps the widgets from their data, or that nothing does",
     .options = option::ofCheck,
     .group = "Request",
     .footer = "Exit status: 0 all three files are usable, 1 something keeps a widget from its\n"
               "data, 2 a wrong call.",
     .examples = "  tessary-widgets check --watch\n"
                 "  tessary-widgets check --container build/sample --strict\n"
                 "  tessary-widgets check --stale-is-error >/dev/null || echo 'no fresh data'"},
    {.name = "help",
     .purpose = "Show this help, or that of a command",
     .options = option::ofProgram,
     .operand = "COMMAND",
     .operandHelp = "list, timeline, render, pins, serve or check",
     .examples = "  tessary-widgets help render"},
};

constexpr Program program{
    {.name = "tessary-widgets",
     .purpose = "Shows the state of CloudWatch alarms and metrics as desktop widgets.",
     .options = option::ofProgram,
     .footer = "WIDGET is alarms, alarm (the alarm pin widget), metric, or a kind identifier.\n"
               "Exit status: 0 done, 1 the output could not be made or written, 2 a wrong call.",
     .examples = "  tessary-widgets render alarms --family medium -o alarms.png\n"
                 "  tessary-widgets timeline alarms --json\n"
                 "  tessary-widgets help check"},
    commands};

std::optional<std::filesystem::path> pathOf(const std::string& word) {
    return word.empty() ? std::nullopt : std::optional<std::filesystem::path>{word};
}

PinChoice pinChoice(Reader& read) {
    const auto pin = read.words.value(option::pin);
    if (!read.words.has(option::noPin))
        return pin ? PinChoice{PinChoice::Kind::identifier, *pin} : PinChoice{};
    if (pin) read.refuse("--pin '" + *pin + "' and --no-pin: expected one of them");
    return {PinChoice::Kind::none, {}};
}

RequestOptions requestOptions(Reader& read) {
    return {
        .container = read(option::container, pathOf, "a path"),
        .info = read(option::info, pathOf, "a path"),
        .request = read.oneOf<Request>(option::which).value_or(Request::timeline),
        .preview = read.words.has(option::preview),
        .pin = pinChoice(read),
        .at = read(option::at, foundation::Date::parse,
                   "seconds since 1970 (1731772840.5) or a time as in 2024-11-16T16:00:40Z"),
        .locale =
            read(option::locale, UserLocale::parseIdentifier, "a locale such as en_US or de_DE"),
        .timeZone = read(option::timeZone, UserLocale::parseTimeZone,
                         "a time zone such as UTC or Europe/Berlin"),
    };
}

/// As it is named, or as the output's ending names it.
PictureFormat formatOf(Reader& read, const std::optional<std::filesystem::path>& output) {
    if (read.words.has(option::format))
        return read.oneOf<PictureFormat>(option::format).value_or(PictureFormat::png);
    if (!output || output->extension().native().size() < 2) return PictureFormat::png;
    const auto format = extension::formatOf(*output);
    if (!format)
        read.refuse("--output: '" + output->string() + "' ends in none of " +
                    foundation::knownNames<PictureFormat>() +
                    ": expected one of them, or --format");
    return format.value_or(PictureFormat::png);
}

PictureOptions pictureOptions(Reader& read) {
    PictureOptions options{.redacted = read.words.has(option::redacted)};
    const auto maybe = [](auto& to, const auto& value) { to = value.value_or(to); };
    maybe(options.family, read.oneOf<WidgetFamily>(option::family));
    maybe(options.entry, read(option::entry, numberWithin<std::size_t, 0, 1000>,
                              "the number of an entry, from 0"));
    maybe(options.scale, read(option::scale, numberWithin<double, 1, 4>,
                              "a number of pixels per point from 1 to 4"));
    if (read.words.value(option::output) != "-")
        options.output = read(option::output, pathOf, "a path");
    options.format = formatOf(read, options.output);
    return options;
}

std::string widget(Reader& read) {
    const Command& command = *read.words.command;
    const auto& operands = read.words.operands;
    const std::size_t most = *command.operand ? 1 : 0;
    if (operands.size() > most)
        read.refuse("unexpected word '" + operands[most] + "' behind " + command.name);
    std::string widget = operands.empty() ? "" : operands[0];
    if (most == 1 && widget.empty())
        read.refuse(std::string{"no widget given: expected "} + anyWidget);
    return widget;
}

Call callOf(Reader& read) {
    const auto& words = read.words;
    const std::string name = words.command->name;
    const std::string asked = widget(read);
    const bool json = words.has(option::json);
    const RequestOptions request = requestOptions(read);
    if (name == "list") return ListCommand{json};
    if (name == "check")
        return CheckCommand{request,
                            json,
                            words.has(option::watch),
                            {words.has(option::strict), words.has(option::staleIsError)}};
    if (name == "serve") return ServeCommand{request, words.has(option::requireSandbox)};
    if (name == "timeline") return TimelineCommand{asked, request, json};
    if (name == "render") return RenderCommand{asked, request, pictureOptions(read)};
    return PinsCommand{asked, request, words.values(option::id), json};
}

}  // namespace

Result<Call> parseCommandLine(const std::vector<std::string>& call) {
    return parse(program, call).andThen([](const Words& words) -> Result<Call> {
        if (words.has(option::help)) return Call{Information{help(program, *words.command)}};
        if (words.has(option::version))
            return Call{Information{"tessary-widgets " TESSARY_VERSION "\n"}};
        Reader read{words};
        const Call asked = callOf(read);
        return read.whole(asked);
    });
}

}  // namespace tessary::command
