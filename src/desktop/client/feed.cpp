#include "desktop/client/feed.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

#include "desktop/client/program.h"
#include "platform/foundation/joined.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/letters.h"
#include "platform/foundation/visible_text.h"

namespace tessary::client {

using foundation::Result;
using foundation::visible;

namespace {

constexpr const char* program = "tessary-widgets-feed";
constexpr const char* statusCommand = "tessary-widgets-feed status";
constexpr std::size_t mostBytes = std::size_t{16} << 20U;
constexpr foundation::Limits limits{.bytes = mostBytes, .depth = 32, .values = 1'000'000};
constexpr std::chrono::seconds patience{60};
constexpr const char* between = " · ";
constexpr std::size_t mostCells = 1'000;  // of a text: an alarm's name has up to 255 letters

struct Alarm {
    std::string profile{}, region{}, name{}, id{};
    std::optional<std::string> state{};
    bool pinned{};
};

struct Metric {
    std::string profile{}, region{}, nameSpace{}, name{}, id{};
    std::map<std::string, std::string> dimensions{};
    bool pinned{};
};

/// What the program prints: one of the three lists, and what went wrong in some places.
template <class Element>
struct Listing {
    std::vector<Element> found{};
    std::vector<std::string> faults{};
    bool more{};
};

struct Pinned {
    std::string id{};
};

struct Pins {
    std::vector<Pinned> pins{};
};

}  // namespace

}  // namespace tessary::client

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<client::Alarm> = std::tuple{
    Field{"profile", &client::Alarm::profile}, Field{"region", &client::Alarm::region},
    Field{"name", &client::Alarm::name},       Field{"id", &client::Alarm::id},
    Field{"state", &client::Alarm::state},     Field{"pinned", &client::Alarm::pinned},
};
template <>
inline constexpr auto fieldsOf<client::Metric> = std::tuple{
    Field{"profile", &client::Metric::profile},
    Field{"region", &client::Metric::region},
    Field{"namespace", &client::Metric::nameSpace},
    Field{"name", &client::Metric::name},
    Field{"id", &client::Metric::id},
    Field{"dimensions", &client::Metric::dimensions},
    Field{"pinned", &client::Metric::pinned},
};
template <>
inline constexpr auto fieldsOf<client::Listing<client::Alarm>> = std::tuple{
    Field{"alarms", &client::Listing<client::Alarm>::found},
    Field{"faults", &client::Listing<client::Alarm>::faults},
    Field{"more", &client::Listing<client::Alarm>::more},
};
template <>
inline constexpr auto fieldsOf<client::Listing<client::Metric>> = std::tuple{
    Field{"metrics", &client::Listing<client::Metric>::found},
    Field{"faults", &client::Listing<client::Metric>::faults},
    Field{"more", &client::Listing<client::Metric>::more},
};
template <>
inline constexpr auto fieldsOf<client::Pinned> = std::tuple{Field{"id", &client::Pinned::id}};
template <>
inline constexpr auto fieldsOf<client::Pins> = std::tuple{Field{"pins", &client::Pins::pins}};

}  // namespace tessary::foundation

namespace tessary::client {

namespace {

/// The first line that says something, without the program's name.
std::string lineOf(std::string_view errors) {
    const std::string mark = std::string{program} + ": ";
    const auto begin = std::min(errors.find_first_not_of(" \t\r\n"), errors.size());
    auto line = errors.substr(begin, errors.find('\n', begin) - begin);
    if (line.starts_with(mark)) line.remove_prefix(mark.size());
    return visible(line);
}

Failure failureFor(const system::ChildFault& fault) {
    using Kind = system::ChildFault::Kind;
    const std::string name = program;
    switch (fault.kind) {
        case Kind::notFound: return {"The program " + name + " is not installed.", ""};
        case Kind::timedOut: return {name + " has not answered for a minute.", statusCommand};
        case Kind::tooMuchOutput: return {name + " answers without end.", statusCommand};
        case Kind::notStarted:
        case Kind::stopped: break;
    }
    return {visible(fault.message()), ""};
}

/// What the program says itself to type comes first.
Failure failureFor(const system::Ended& ended) {
    auto said = lineOf(ended.errors);
    const bool begins = said.find(watchCommand) != said.npos;
    if (said.empty())
        said = std::string{program} + " failed with " +
               (ended.signal != 0 ? "signal " + std::to_string(ended.signal)
                                  : "status " + std::to_string(ended.status)) +
               ".";
    return {said, begins ? watchCommand : statusCommand};
}

template <class Record>
Result<Record, Failure> printed(const Chore::Outcome& outcome) {
    if (!outcome) return failureFor(outcome.fault());
    if (outcome->status != 0 || outcome->signal != 0) return failureFor(*outcome);
    auto record = foundation::decodeJSON<Record>(outcome->output, limits);
    if (record) return *std::move(record);
    return Failure{std::string{program} +
                   " answers with something else: " + visible(record.fault().message())};
}

std::string stateIn(const std::string& word) {
    if (word == "ALARM") return "In alarm";
    return word == "INSUFFICIENT_DATA" ? "Insufficient data" : word;
}

/// What a row says below its name, of all that there is.
std::string detail(bool pinned, const std::vector<std::string>& parts) {
    std::string text = pinned ? "Pinned" : "";
    for (const auto& part : parts)
        if (!part.empty()) (text += text.empty() ? "" : between) += visible(part, mostCells);
    return text;
}

std::vector<std::string> pairsOf(const Metric& metric) {
    std::vector<std::string> pairs;
    for (const auto& [name, value] : metric.dimensions) pairs.push_back(name + "=" + value);
    return pairs;
}

std::vector<std::string> wordsToPin(const std::string& profile, const std::string& region,
                                    const std::vector<std::string>& operands) {
    std::vector<std::string> words;
    if (!profile.empty()) words = {"--profile", profile};
    words.insert(words.end(), {"--region", region, "--"});
    words.insert(words.end(), operands.begin(), operands.end());
    return words;
}

void add(Offers& offers, const Alarm& alarm) {
    const auto& [profile, region, name, id, state, pinned] = alarm;
    offers.offered.push_back({id, visible(name, mostCells),
                              detail(pinned, {stateIn(state.value_or("")), profile, region})});
    offers.ways.push_back({pinned, {}, wordsToPin(profile, region, {name})});
}

void add(Offers& offers, const Metric& metric) {
    const auto& [profile, region, nameSpace, name, id, dimensions, pinned] = metric;
    const auto pairs = pairsOf(metric);
    offers.offered.push_back(
        {id, visible(name, mostCells),
         detail(pinned, {nameSpace, foundation::joined(pairs, ", "), profile, region})});
    std::vector<std::string> operands{nameSpace, name};
    operands.insert(operands.end(), pairs.begin(), pairs.end());
    offers.ways.push_back({pinned, nameSpace, wordsToPin(profile, region, operands)});
}

template <class Element>
Result<Offers, Failure> offersOf(const Chore::Outcome& outcome) {
    return printed<Listing<Element>>(outcome).transform([](const auto& listing) {
        Offers offers{.more = listing.more};
        for (const auto& element : listing.found) add(offers, element);
        for (const auto& fault : listing.faults) offers.faults.push_back(visible(fault));
        return offers;
    });
}

using Words = std::vector<std::string>;

system::Errand errand(const Words& command, const Account& account, const Words& rest) {
    Words words{programOfOurs(program)};
    for (const auto& part : {command, {"--json"}, account.options, rest})
        words.insert(words.end(), part.begin(), part.end());
    return {.words = std::move(words), .mostOutput = mostBytes, .time = patience};
}

bool beginsWith(std::string_view words, std::string_view nameSpace) {
    return foundation::inSmallLetters(words.substr(0, nameSpace.size())) ==
               foundation::inSmallLetters(nameSpace) &&
           (words.size() == nameSpace.size() || words[nameSpace.size()] == ' ');
}

/// The longest that is listed, or the first word; without what follows.
std::string nameSpaceIn(std::string_view words, const Offers& offers, bool nothingFound) {
    std::string found;
    for (const auto& [pinned, nameSpace, toPin] : offers.ways)
        if (nameSpace.size() > found.size() && beginsWith(words, nameSpace)) found = nameSpace;
    if (!found.empty()) return found;
    const std::string first{words.substr(0, words.find(' '))};
    const auto slash = first.find('/');
    const bool looksLikeOne = slash != first.npos && slash + 1 < first.size();
    return nothingFound || looksLikeOne ? first : "";
}

}  // namespace

void Offers::add(Offers other) {
    std::set<std::string_view> known;
    for (const auto& pin : offered) known.insert(pin.id);
    std::vector<Pin> pins;
    for (std::size_t i = 0; i < other.offered.size(); ++i) {
        if (known.contains(other.offered[i].id)) continue;
        pins.push_back(std::move(other.offered[i]));
        ways.push_back(std::move(other.ways[i]));
    }
    offered.insert(offered.end(), pins.begin(), pins.end());
    faults = std::move(other.faults);
    more = other.more;
}

system::Errand listing(const Account& account, const Scope& scope) {
    Words rest = scope;
    if (!scope.empty()) rest.insert(rest.begin(), "--");
    return errand({std::string{foundation::name(account.pinnable)} + "s"}, account, rest);
}

system::Errand pinning(const Account& account, const Way& way) {
    return errand({"pin", std::string{foundation::name(account.pinnable)}}, account, way.words);
}

Result<Offers, Failure> offersOf(const Account& account, const Chore::Outcome& outcome) {
    return account.pinnable == Pinnable::alarm ? offersOf<Alarm>(outcome)
                                               : offersOf<Metric>(outcome);
}

Result<std::string, Failure> pinnedBy(const Chore::Outcome& outcome) {
    return printed<Pins>(outcome).andThen([](const Pins& pins) -> Result<std::string, Failure> {
        if (pins.pins.empty()) return Failure{std::string{program} + " has pinned nothing."};
        return pins.pins.front().id;
    });
}

std::optional<Scope> scopeToAsk(std::string_view words, const Offers& offers,
                                const std::map<Scope, bool>& asked, bool nothingFound) {
    words.remove_prefix(std::min(words.find_first_not_of(' '), words.size()));
    const auto nameSpace = nameSpaceIn(words, offers, nothingFound);
    auto rest = words.substr(std::min(nameSpace.size() + 1, words.size()));
    const std::string name{rest.substr(0, rest.find(' '))};
    Scope scope;
    for (const auto& word : {nameSpace, name}) {
        const auto known = asked.find(scope);
        if (word.empty() || known == asked.end() || !known->second) return std::nullopt;
        scope.push_back(word);
        if (!asked.contains(scope)) return scope;
    }
    return std::nullopt;
}

}  // namespace tessary::client
