#include "feed/aws/client.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <curl/curl.h>
#include <limits>
#include <optional>
#include <random>
#include <string_view>
#include <utility>

#include "feed/aws/endpoint.h"
#include "platform/foundation/visible_text.h"

namespace tessary::aws {

namespace {

using Kind = Trouble::Kind;

constexpr long longestKept = 16;          // connections that wait for their next call
constexpr std::size_t longestSaid = 200;  // cells

/// What the library says less well, or with figures that differ each time, or what will not pass.
struct Failure {
    CURLcode code{};
    Kind kind{};
    std::string_view words{};  ///< empty where the library's own will do
};

constexpr std::array failures{
    Failure{CURLE_OPERATION_TIMEDOUT, Kind::passing, "No answer in time"},
    Failure{CURLE_COULDNT_CONNECT, Kind::passing, "Could not connect"},
    Failure{CURLE_PARTIAL_FILE, Kind::passing, "The answer broke off"},
    Failure{CURLE_WRITE_ERROR, Kind::lasting, "The answer is longer than 16 MiB"},
    Failure{CURLE_PEER_FAILED_VERIFICATION, Kind::lasting, ""},
    Failure{CURLE_SSL_CACERT_BADFILE, Kind::lasting, "AWS_CA_BUNDLE cannot be read"},
    Failure{CURLE_UNSUPPORTED_PROTOCOL, Kind::lasting, "The address is neither https nor http"},
    Failure{CURLE_URL_MALFORMAT, Kind::lasting, "The address is none"},
    Failure{CURLE_LOGIN_DENIED, Kind::lasting, "The address holds a user"},
};

Trouble troubleOfTransport(CURLcode code, std::string_view said) {
    const auto known = std::ranges::find(failures, code, &Failure::code);
    const Failure failure = known == failures.end() ? Failure{code, Kind::passing, ""} : *known;
    if (!failure.words.empty()) said = failure.words;
    if (said.empty()) said = ::curl_easy_strerror(code);
    return {failure.kind, foundation::visible(said, longestSaid)};
}

std::string without(std::string_view text, std::string_view secret) {
    std::string rest;
    while (!secret.empty() && text.find(secret) != text.npos) {
        rest.append(text.substr(0, text.find(secret))).append("…");
        text.remove_prefix(text.find(secret) + secret.size());
    }
    return rest.append(text);
}

/// A signature is 64 digits; nothing that helps a person has as many.
std::string withoutSignatures(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    constexpr std::size_t length = 64;
    std::string rest;
    while (!text.empty()) {
        const auto number = text.substr(0, text.find_first_not_of(digits));
        text.remove_prefix(number.size());
        const auto between = text.substr(0, text.find_first_of(digits));
        text.remove_prefix(between.size());
        rest.append(number.size() < length ? number : "…").append(between);
    }
    return rest;
}

/// Services repeat what they were sent where its signature is wrong.
std::string withoutSecrets(std::string_view text, const Keys& keys) {
    return withoutSignatures(without(without(without(text, keys.token), keys.secret), keys.id));
}

/// What may stand in a header's line without making another.
bool isPlain(const std::string& text) {
    return std::ranges::all_of(text, [](char c) { return c > ' ' && c < '\x7F'; });
}

/// Why a call is not even tried.
std::optional<Trouble> flawOf(const Call& call) {
    const auto& [id, secret, token, endsMs] = call.keys;
    if (id.empty() || secret.empty() || !isPlain(id + secret + token))
        return Trouble{Kind::unknownKeys, "The keys are none"};
    if (!isRegion(call.region)) return Trouble{Kind::lasting, "The region is none"};
    return std::nullopt;
}

/// At least one: none would mean for ever.
long milliseconds(double seconds) { return std::max(std::lround(seconds * 1000), 1L); }

}  // namespace

double steadySeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double anyShare() {
    static std::minstd_rand generator{std::random_device{}()};
    return std::uniform_real_distribution<>{0, 1}(generator);
}

/// What is kept between the runs.
struct Client::Transport {
    Transport() {
        static const CURLcode started = ::curl_global_init(CURL_GLOBAL_DEFAULT);
        if (started != CURLE_OK) std::abort();
        all = ::curl_multi_init();
        ::curl_multi_setopt(all, CURLMOPT_MAXCONNECTS, longestKept);
    }
    Transport(const Transport&) = delete;
    ~Transport() { ::curl_multi_cleanup(all); }

    CURLM* all{};
};

/// One try of a call, under way as long as this lives.
class Client::Exchange {
public:
    Exchange(const Call& call, double seconds, CURLM* all)
        : call_(call), all_(all), handle_(::curl_easy_init()) {
        send();
        allow(seconds);
        sign();
        receive();
        ::curl_multi_add_handle(all_, handle_);
    }
    Exchange(const Exchange&) = delete;
    ~Exchange() {
        ::curl_multi_remove_handle(all_, handle_);
        ::curl_easy_cleanup(handle_);
        ::curl_slist_free_all(headers_);
    }

    const CURL* handle() const { return handle_; }

    /// Once the library is done with it.
    Answer answer(CURLcode code) {
        if (code != CURLE_OK)
            return troubleOfTransport(code, withoutSecrets(words_.data(), call_.keys));
        long status = 0;
        ::curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &status);
        constexpr long given = 200;
        if (status == given) return std::move(body_);
        auto refusal = refusalOf(static_cast<int>(status), body_);
        refusal.type = withoutSecrets(refusal.type, call_.keys);
        refusal.message = withoutSecrets(refusal.message, call_.keys);
        return troubleOf(refusal);
    }

private:
    template <class Value>
    void set(CURLoption option, Value value) {
        ::curl_easy_setopt(handle_, option, value);
    }

    void addHeader(const std::string& line) {
        headers_ = ::curl_slist_append(headers_, line.c_str());
    }

    void send() {
        set(CURLOPT_URL, call_.url.c_str());
        set(CURLOPT_POSTFIELDS, call_.body.c_str());
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(call_.body.size()));
        addHeader("Content-Type: application/x-amz-json-1.0");
        addHeader("X-Amz-Target: GraniteServiceVersion20100801." + call_.action);
        if (!call_.keys.token.empty()) addHeader("X-Amz-Security-Token: " + call_.keys.token);
        set(CURLOPT_HTTPHEADER, headers_);
        set(CURLOPT_USERAGENT, "tessary-widgets-feed");
    }

    void allow(double seconds) {
        const bool isPlainHTTP = call_.url.starts_with("http://");
        set(CURLOPT_PROTOCOLS_STR, isPlainHTTP ? "http" : "https");
        set(CURLOPT_DEFAULT_PROTOCOL, "https");
        set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
        set(CURLOPT_FOLLOWLOCATION, 0L);
        set(CURLOPT_NETRC, long{CURL_NETRC_IGNORED});
        set(CURLOPT_DISALLOW_USERNAME_IN_URL, 1L);
        set(CURLOPT_QUICK_EXIT, 1L);  // a name that is never resolved would else hold up the end
        set(CURLOPT_TIMEOUT_MS, milliseconds(seconds));
        set(CURLOPT_CONNECTTIMEOUT_MS, milliseconds(seconds / 2));
        const char* const authorities = std::getenv("AWS_CA_BUNDLE");
        if (authorities != nullptr && *authorities != '\0') set(CURLOPT_CAINFO, authorities);
    }

    void sign() {
        set(CURLOPT_AWS_SIGV4, ("aws:amz:" + call_.region + ":monitoring").c_str());
        set(CURLOPT_USERNAME, call_.keys.id.c_str());
        set(CURLOPT_PASSWORD, call_.keys.secret.c_str());
    }

    void receive() {
        set(CURLOPT_ACCEPT_ENCODING, "gzip");
        set(CURLOPT_ERRORBUFFER, words_.data());
        set(CURLOPT_WRITEDATA, &body_);
        set(CURLOPT_WRITEFUNCTION, &append);
    }

    /// Less than `count` makes the library give up.
    static std::size_t append(const char* bytes, std::size_t, std::size_t count, void* body) {
        auto& text = *static_cast<std::string*>(body);
        if (text.size() + count > longestAnswer) return 0;
        text.append(bytes, count);
        return count;
    }

    const Call& call_;
    CURLM* all_;
    CURL* handle_;
    curl_slist* headers_{};
    std::string body_{};
    std::array<char, CURL_ERROR_SIZE> words_{};
};

/// A call until it is answered.
struct Client::Job {
    Call call{};
    std::function<void(Answer)> answered{};
    int* burden{};  ///< of its endpoint
    double due{};   ///< not to be tried before
    int tries{};
    std::optional<Trouble> trouble{};    ///< what came of the latest
    std::optional<Exchange> exchange{};  ///< the one under way
};

Client::Client(Patience patience)
    : patience_(std::move(patience)), transport_(std::make_unique<Transport>()) {}

Client::~Client() = default;

void Client::call(Call call, std::function<void(Answer)> answered) {
    int& burden = burdens_[call.region + ' ' + call.url];
    Job& job = jobs_.emplace_back();
    job.call = std::move(call);
    job.answered = std::move(answered);
    job.burden = &burden;
}

void Client::when(std::function<bool()> isReady, std::function<void(bool)> go) {
    waits_.push_back({std::move(isReady), std::move(go)});
}

void Client::run() {
    end_ = patience_.clock() + patience_.budget;
    while (!isDone()) {
        if (patience_.clock() >= end_) {
            cutOff();
            continue;
        }
        letGo();
        start();
        progress();
    }
    burdens_.clear();
}

/// Who is let go may wait again.
void Client::letGo() {
    std::list<Wait> ready;
    for (auto at = waits_.begin(); at != waits_.end();) {
        const auto each = at++;
        if (each->isReady()) ready.splice(ready.end(), waits_, each);
    }
    for (const Wait& wait : ready) wait.go(true);
}

void Client::start() {
    const double now = patience_.clock();
    const auto isUnderWay = [](const Job& job) { return job.exchange.has_value(); };
    auto free =
        patience_.atOnce - static_cast<std::size_t>(std::ranges::count_if(jobs_, isUnderWay));
    while (free > 0) {
        const auto urgency = [&](const Job& job) {
            return isUnderWay(job) || job.due > now ? std::numeric_limits<int>::max() : *job.burden;
        };
        const auto job = std::ranges::min_element(jobs_, {}, urgency);
        if (job == jobs_.end() || urgency(*job) == std::numeric_limits<int>::max()) return;
        if (auto flaw = flawOf(job->call)) {
            finish(job, *std::move(flaw));
            continue;
        }
        --free;
        ++job->tries;
        ++*job->burden;
        job->exchange.emplace(job->call, patience_.call, transport_->all);
    }
}

void Client::progress() {
    int count = 0;
    ::curl_multi_perform(transport_->all, &count);
    bool isIdle = true;
    while (const CURLMsg* const message = ::curl_multi_info_read(transport_->all, &count)) {
        const CURLcode code = message->data.result;
        const auto job = std::ranges::find_if(jobs_, [&](const Job& each) {
            return each.exchange && each.exchange->handle() == message->easy_handle;
        });
        Answer answer = job->exchange->answer(code);
        job->exchange.reset();
        if (code == CURLE_OK) --*job->burden;
        isIdle = false;
        if (answer || !isPutOff(*job, answer.fault())) finish(job, std::move(answer));
    }
    if (!isIdle) return;
    const auto wait = static_cast<int>(std::ceil(idleSeconds() * 1000));
    ::curl_multi_poll(transport_->all, nullptr, 0, wait, nullptr);
}

void Client::finish(Jobs::iterator job, Answer answer) {
    // The receiver may call again, so its call is over before it knows.
    Jobs done;
    done.splice(done.end(), jobs_, job);
    done.front().answered(std::move(answer));
}

/// Whether a call is to be tried again; then it knows when.
bool Client::isPutOff(Job& job, const Trouble& trouble) const {
    job.trouble = trouble;
    if (trouble.kind != Kind::passing || job.tries > patience_.retries) return false;
    const double longest = std::ldexp(patience_.pause, job.tries - 1);
    job.due = patience_.clock() + patience_.chance() * longest;
    return job.due < end_;
}

void Client::cutOff() {
    Jobs rest;
    std::list<Wait> waits;
    rest.swap(jobs_);
    waits.swap(waits_);
    for (const Wait& wait : waits) wait.go(false);
    for (Job& job : rest) {
        job.exchange.reset();
        std::string words = "Cut off at the end of the round";
        if (job.trouble) words += ": " + job.trouble->words;
        job.answered(Trouble{Kind::passing, std::move(words)});
    }
}

/// Until the next thing that no answer brings about.
double Client::idleSeconds() const {
    constexpr double look = 0.02;  // seconds between two looks at what calls wait for
    const double now = patience_.clock();
    double next = isDone() ? now : waits_.empty() ? end_ : std::min(end_, now + look);
    for (const Job& job : jobs_)
        if (!job.exchange && job.due > now) next = std::min(next, job.due);
    return std::max(next - now, 0.0);
}

}  // namespace tessary::aws
