#include "feed/aws/key_ring.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "feed/aws/shell_words.h"
#include "feed/aws/sso_cache.h"
#include "feed/aws/trouble.h"
#include "platform/foundation/json_decoding.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"

namespace tessary::aws {

/// What a program prints that hands out keys.
struct PrintedKeys {
    std::int64_t version{};
    std::string id{};
    std::string secret{};
    std::optional<std::string> token{};
    std::optional<std::string> ends{};
};

}  // namespace tessary::aws

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::aws::PrintedKeys> = std::tuple{
    Field{"Version", &tessary::aws::PrintedKeys::version},
    Field{"AccessKeyId", &tessary::aws::PrintedKeys::id},
    Field{"SecretAccessKey", &tessary::aws::PrintedKeys::secret},
    Field{"SessionToken", &tessary::aws::PrintedKeys::token},
    Field{"Expiration", &tessary::aws::PrintedKeys::ends},
};

namespace tessary::aws {

namespace {

namespace fs = std::filesystem;

using Fetched = KeyRing::Fetched;

constexpr std::int64_t minuteMs = 60'000;
constexpr std::int64_t marginMs = 5 * minuteMs;    // before the end of a lease
constexpr std::int64_t endlessMs = 15 * minuteMs;  // a lease that tells no end
constexpr std::int64_t pauseMs = 5 * minuteMs;     // of a profile whose sign-in has expired

// ---- words for a person

bool isInKeys(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '/' || c == '=';
}

/// Whether a run of such characters may be a key, a secret or a token.
bool looksSecret(std::string_view run) {
    constexpr std::size_t shortestSecret = 40;
    constexpr std::size_t shortestId = 16;
    const auto holds = [&](std::string_view part) { return run.find(part) != run.npos; };
    return run.size() >= shortestSecret ||
           (run.size() >= shortestId && (holds("AKIA") || holds("ASIA")));
}

/// What a program says, on one line of 200 cells. Should it say keys, they are left out.
std::string cleaned(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const auto* const end = std::ranges::find_if_not(text, isInKeys);
        const auto length = static_cast<std::size_t>(end - text.begin());
        const char next = length < text.size() ? text[length] : ' ';
        const bool isBlank = next == ' ' || (next >= '\t' && next <= '\r');
        line += looksSecret(text.substr(0, length)) ? "…" : text.substr(0, length);
        if (!isBlank) line += next;
        if (isBlank && !line.empty() && line.back() != ' ') line += ' ';
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    if (line.ends_with(' ')) line.pop_back();
    return foundation::visible(line);
}

KeyFault failed(std::string_view words, std::string_view remedy = {}) {
    return {.words = cleaned(words), .remedy = foundation::visible(remedy)};
}

// ---- the table of signs

/// "(ExpiredToken) when calling the GetRoleCredentials operation: It has expired" as a refusal.
std::optional<Refusal> refusalIn(std::string_view text) {
    constexpr std::string_view opening = "An error occurred (";
    constexpr std::string_view colon = " operation: ";
    const auto at = text.find(opening);
    if (at == text.npos) return std::nullopt;
    const auto said = text.substr(at + opening.size());
    const auto message = said.find(colon);
    constexpr int badRequest = 400;
    return Refusal{
        .status = badRequest,
        .type = std::string{said.substr(0, said.find(')'))},
        .message = std::string{message == said.npos ? "" : said.substr(message + colon.size())}};
}

/// What says that somebody has to sign in, from its first word on; none where nothing does.
std::optional<std::string_view> expirationIn(std::string_view text) {
    constexpr std::array<std::string_view, 4> signs{
        "Token has expired and refresh failed",
        "Error loading SSO Token: ", "The SSO session associated with this profile has expired",
        "Enter MFA code for ",  // on a terminal that it does not have
    };
    for (const auto sign : signs)
        if (const auto at = text.find(sign); at != text.npos) return text.substr(at);
    const auto refusal = refusalIn(text);
    if (!refusal) return std::nullopt;
    const auto kind = troubleOf(*refusal).kind;
    const bool isExpired =
        kind == Trouble::Kind::tokenExpired || kind == Trouble::Kind::unknownKeys;
    return isExpired ? std::optional{text} : std::nullopt;
}

/// Version 1 of the AWS command line, which knows no "export-credentials".
bool isFirstVersion(const system::Ended& ended) {
    constexpr int wrongCall = 2;
    return ended.status == wrongCall && ended.errors.find("Invalid choice") != std::string::npos;
}

/// Of a program that was to print keys and ended otherwise.
KeyFault faultOf(const std::string& program, const system::Ended& ended, std::string_view remedy) {
    if (isFirstVersion(ended))
        return failed("version 2 of the AWS command line is needed, and this is version 1",
                      "sudo apt install awscli");
    const auto expiration = expirationIn(ended.errors);
    auto words = cleaned(expiration.value_or(ended.errors));
    if (words.empty() && ended.signal != 0)
        words = program + " was ended by signal " + std::to_string(ended.signal);
    if (words.empty()) words = program + " ended with status " + std::to_string(ended.status);
    auto fault = failed(words, remedy);
    fault.authExpired = expiration.has_value();
    return fault;
}

// ---- keys

/// A key is one word of plain characters, and goes into the head of a request.
bool isOneWord(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; });
}

Fetched checked(Keys keys) {
    if (keys.id.empty() || keys.secret.empty()) return failed("the keys are not whole");
    if (!isOneWord(keys.id) || !isOneWord(keys.secret) || !isOneWord(keys.token))
        return failed("the keys hold a character that no key has");
    return keys;
}

/// Never says what was found, which may be a key.
Fetched printedKeys(const std::string& program, std::string_view output) {
    const auto printed = foundation::decodeJSON<PrintedKeys>(output, {.depth = 16});
    if (!printed)
        return failed(program + " printed no keys: expected " + printed.fault().expected +
                      (printed.fault().path.empty() ? "" : " at " + printed.fault().path));
    if (printed->version != 1) return failed(program + " printed keys of another version than 1");
    Keys keys{.id = printed->id, .secret = printed->secret, .token = printed->token.value_or("")};
    if (printed->ends && !(keys.endsMs = toolTimeMs(*printed->ends)))
        return failed(program + " printed an Expiration that is no time");
    return checked(std::move(keys));
}

/// A text that is not there is empty.
system::FileContents textOf(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error) && !error) return std::string{};
    return system::readFile(path);
}

/// One look at the files and, where they do not suffice, at what a program prints.
class Search {
public:
    Search(const KeySources& sources, const KeyRing::Run& run, std::int64_t nowMs)
        : sources_(sources), run_(run), nowMs_(nowMs) {}

    /// What to type; known once the keys have been looked for.
    const std::string& remedy() const { return remedy_; }

    Fetched keysOf(const std::string& name) {
        if (name.empty() && sources_.own) return checked(*sources_.own);
        const auto config = textOf(sources_.config);
        if (!config) return failed(sources_.config.string() + ": " + config.fault().message());
        const auto credentials = textOf(sources_.credentials);
        if (!credentials)
            return failed(sources_.credentials.string() + ": " + credentials.fault().message());
        const Profiles profiles{*config, *credentials};
        const std::string& wanted = name.empty() ? sources_.usual : name;
        if (const auto* const profile = profiles.find(wanted)) return keysOf(*profile, profiles);
        remedy_ = Profile{.name = wanted}.remedy();
        if (name.empty() && wanted == KeySources{}.usual) return ofTool({});
        return failed("there is no profile '" + wanted + "'", remedy_);
    }

private:
    Fetched keysOf(const Profile& profile, const Profiles& profiles) {
        const Profile& signer = signerOf(profile, profiles);
        remedy_ = signer.remedy();
        switch (profile.signIn()) {
            case SignIn::keys:
                return checked({.id = profile.setting("aws_access_key_id").value_or(""),
                                .secret = profile.setting("aws_secret_access_key").value_or(""),
                                .token = profile.setting("aws_session_token").value_or("")});
            case SignIn::process:
                return ofProcess(profile.setting("credential_process").value_or(""));
            case SignIn::sso:
            case SignIn::tool: break;
        }
        const auto state = signInOf(signer);
        if (state && state->hasExpired(nowMs_))
            return KeyFault{true, state->endsMs, "the sign-in has expired", remedy_};
        auto keys = ofTool({"--profile", profile.name});
        const bool isOver = !keys && keys.fault().authExpired && state && state->endsMs <= nowMs_;
        if (!isOver) return keys;
        auto fault = keys.fault();
        fault.endedMs = state->endsMs;
        return fault;
    }

    /// Whose sign-in a role stands on; its own where it asks for a code.
    static const Profile& signerOf(const Profile& profile, const Profiles& profiles) {
        constexpr int longestChain = 8;
        const Profile* signer = &profile;
        for (int i = 0; i < longestChain; ++i) {
            const auto source = signer->setting("source_profile");
            const auto* const next = source ? profiles.find(*source) : nullptr;
            if (next == nullptr || signer->setting("mfa_serial")) break;
            signer = next;
        }
        return *signer;
    }

    std::optional<SignInState> signInOf(const Profile& profile) const {
        const auto key = profile.signInKey();
        const auto text = key ? textOf(sources_.signIns / ssoCacheFile(*key)) : std::string{};
        return text ? readSignInState(*text) : std::nullopt;
    }

    Fetched ofProcess(const std::string& line) {
        const auto words = shellWords(line);
        if (!words || words->empty())
            return failed("credential_process has a quote without its end, or no word");
        return printed({.words = *words, .without = {"NOTIFY_SOCKET", "WATCHDOG_*"}});
    }

    Fetched ofTool(const std::vector<std::string>& profile) {
        system::Errand errand{
            .words = {"aws", "configure", "export-credentials"},
            .with = {"AWS_PAGER=", "AWS_MAX_ATTEMPTS=1", "AWS_CLI_AUTO_PROMPT=off"},
            .without = {"AWS_*KEY*", "AWS_*TOKEN*", "NOTIFY_SOCKET", "WATCHDOG_*"}};
        errand.words.insert(errand.words.end(), profile.begin(), profile.end());
        errand.words.insert(errand.words.end(), {"--format", "process"});
        return printed(errand);
    }

    Fetched printed(const system::Errand& errand) {
        const std::string& program = errand.words.front();
        const auto ended = run_(errand);
        const bool lacksTool =
            !ended && program == "aws" && ended.fault().kind == system::ChildFault::Kind::notFound;
        if (lacksTool)
            return failed("the AWS command line is needed, and not installed",
                          "sudo apt install awscli");
        if (!ended) return failed(ended.fault().message());
        if (ended->status != 0 || ended->signal != 0) return faultOf(program, *ended, remedy_);
        auto keys = printedKeys(program, ended->output);
        const bool areOver = keys && keys->endsMs && *keys->endsMs <= nowMs_;
        if (areOver) return KeyFault{true, keys->endsMs, "the keys have expired", remedy_};
        return keys;
    }

    const KeySources& sources_;
    const KeyRing::Run& run_;
    std::int64_t nowMs_;
    std::string remedy_{"aws configure"};
};

/// How long a lease is used. Short ones for a minute at least: many calls follow each other.
std::int64_t lastsUntil(const Keys& keys, std::int64_t nowMs) {
    if (!keys.endsMs) return nowMs + endlessMs;
    return std::max(*keys.endsMs - marginMs, std::min(*keys.endsMs, nowMs + minuteMs));
}

/// When to ask again, of what took this long to fail.
std::int64_t waitsUntil(const KeyFault& fault, std::int64_t nowMs, std::int64_t tookMs) {
    constexpr int share = 10;
    return nowMs +
           (fault.authExpired ? pauseMs : std::clamp(share * tookMs, std::int64_t{}, pauseMs));
}

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// A path of the environment, whose "~" is the home folder.
fs::path place(const char* name, const fs::path& home, const char* usual) {
    const auto given = variable(name);
    if (given.starts_with("~/")) return home / given.substr(2);
    return given.empty() ? home / ".aws" / usual : fs::path{given};
}

}  // namespace

KeySources KeySources::ofEnvironment() {
    const auto home = fs::path{"/"} / variable("HOME");  // never the current folder
    KeySources sources{.config = place("AWS_CONFIG_FILE", home, "config"),
                       .credentials = place("AWS_SHARED_CREDENTIALS_FILE", home, "credentials"),
                       .signIns = home / ".aws/sso/cache"};
    for (const char* const name : {"AWS_DEFAULT_PROFILE", "AWS_PROFILE"})
        if (const auto named = variable(name); !named.empty()) sources.usual = named;
    const Keys own{.id = variable("AWS_ACCESS_KEY_ID"),
                   .secret = variable("AWS_SECRET_ACCESS_KEY"),
                   .token = variable("AWS_SESSION_TOKEN")};
    if (!own.id.empty() && !own.secret.empty()) sources.own = own;
    return sources;
}

KeyRing::KeyRing(KeySources sources, foundation::Clock clock, Run run)
    : sources_(std::move(sources)), clock_(std::move(clock)), run_(std::move(run)) {}

/// Leases outlive sign-ins, which programs renew by themselves; faults do not. After a clock that
/// was set back nothing is known.
bool KeyRing::Held::holds(const Marks& marks, std::int64_t nowMs) const {
    if (isForgotten || nowMs < sinceMs || nowMs >= untilMs) return false;
    return what ? marks.settings == seen.settings : marks == seen;
}

bool KeyRing::holds(const std::string& profile, const Marks& marks) const {
    const auto known = held_.find(profile);
    return known != held_.end() && known->second.holds(marks, nowMs());
}

bool KeyRing::isReady(const std::string& profile) {
    const auto [task, isNew] = underWay_.try_emplace(profile);
    if (isNew) {
        const auto marks = this->marks();
        if (holds(profile, marks)) return underWay_.erase(task), true;
        task->second = std::async(std::launch::async, &KeyRing::fetched, this, profile, marks);
    }
    if (task->second.wait_for(std::chrono::seconds{0}) != std::future_status::ready) return false;
    Held held = task->second.get();
    constexpr std::int64_t leastMs = 1000;  // so that it does for all who wait for it
    held.untilMs = std::max(held.untilMs, held.sinceMs + leastMs);
    settle(profile, std::move(held));
    underWay_.erase(task);
    return true;
}

Fetched KeyRing::keysOf(const std::string& profile) {
    if (const auto task = underWay_.find(profile); task != underWay_.end()) {
        settle(profile, task->second.get());
        underWay_.erase(task);
    }
    const auto marks = this->marks();
    if (!holds(profile, marks)) settle(profile, fetched(profile, marks));
    return held_.at(profile).what;
}

void KeyRing::settle(const std::string& profile, Held held) {
    const auto known = held_.find(profile);
    held.isSecond = known != held_.end() && held.seen == known->second.seen &&
                    (known->second.isForgotten ||
                     (!known->second.what && known->second.what.fault().authExpired));
    held_.insert_or_assign(profile, std::move(held));
}

void KeyRing::forget(const std::string& profile, const Keys& refused) {
    const auto known = held_.find(profile);
    if (known == held_.end()) return;
    auto& held = known->second;
    if (!held.what || *held.what != refused) return;
    held.seen = marks();
    held.isForgotten = !held.isSecond || nowMs() >= held.sinceMs + pauseMs;
    if (held.isForgotten) return;
    held.what = KeyFault{true, std::nullopt, "the keys have expired", held.remedy};
    held.untilMs = held.sinceMs + pauseMs;
}

/// The files are marked before they are read: no sign-in is missed.
KeyRing::Held KeyRing::fetched(const std::string& profile, const Marks& marks) const {
    const auto startMs = nowMs();
    Search search{sources_, run_, startMs};
    Held held{.what = search.keysOf(profile), .sinceMs = nowMs(), .seen = marks};
    held.remedy = foundation::visible(search.remedy());
    held.untilMs = held.what ? lastsUntil(*held.what, held.sinceMs)
                             : waitsUntil(held.what.fault(), held.sinceMs, held.sinceMs - startMs);
    if (held.what && held.what->endsMs) held.what->endsMs = held.untilMs;
    return held;
}

KeyRing::Marks KeyRing::marks() const {
    const auto markOf = [](const fs::path& path) {
        std::error_code none;
        return Mark{fs::last_write_time(path, none), fs::file_size(path, none)};
    };
    Marks marks{.settings = {markOf(sources_.config), markOf(sources_.credentials)}};
    std::error_code error;
    for (fs::directory_iterator at{sources_.signIns, error}, end; !error && at != end;
         at.increment(error)) {
        marks.signIns.written = std::max(marks.signIns.written, markOf(at->path()).written);
        ++marks.signIns.size;
    }
    return marks;
}

std::int64_t KeyRing::nowMs() const { return std::llround(clock_().seconds * 1000); }

}  // namespace tessary::aws
