// Calls to CloudWatch over the network: signed, side by side, each answered once.
//
//     Client client;
//     client.call({.url = cloudWatchURL("eu-west-1", false),
//                  .region = "eu-west-1",
//                  .action = "DescribeAlarms",
//                  .body = toJSON(AlarmsQuery{.state = "ALARM"}),
//                  .keys = keys},
//                 [&](Answer answer) { page = std::move(answer); });
//     client.run();                                       // page is the body, or a trouble
//
// What a call can count on: https alone, unless its address says http; no redirect is followed, no
// .netrc is read; the AWS tools' AWS_CA_BUNDLE and the usual proxy variables are obeyed; and no
// text that comes back holds a key, a token or a signature, whatever the answer repeats of them.
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>

#include "feed/aws/keys.h"
#include "feed/aws/trouble.h"
#include "platform/foundation/result.h"

namespace tessary::aws {

struct Call {
    std::string url{};     ///< "https://monitoring.eu-west-1.amazonaws.com"
    std::string region{};  ///< what signs it needs to know
    std::string action{};  ///< "DescribeAlarms"
    std::string body{};
    Keys keys{};
};

/// The body of an answer that was given, not yet read: it may be no JSON at all.
using Answer = foundation::Result<std::string, Trouble>;

/// Seconds of a clock that only ever goes on.
double steadySeconds();
/// Anything from 0 to 1.
double anyShare();

/// How long calls, and the programs that are asked for their keys, are waited for, in seconds.
struct Patience {
    double budget{20};  ///< for all calls of a run; what is not answered by then is cut off
    double call{6};     ///< for one try; half of it to be connected
    double pause{1};  ///< the longest before the first retry; each further one may take twice that
    int retries{2};   ///< of what may pass
    double program{30};
    std::size_t atOnce{4};
    std::function<double()> clock{steadySeconds};
    std::function<double()> chance{anyShare};  ///< the share of the longest pause that is waited
};

/// Keeps its connections from one run to the next. For one thread.
class Client {
public:
    static constexpr std::size_t longestAnswer = std::size_t{16} << 20U;  ///< bytes, unpacked

    explicit Client(Patience patience = {});
    Client(const Client&) = delete;
    ~Client();

    /// Asks in the next run, or in this one where an answer's receiver wants to know more.
    void call(Call call, std::function<void(Answer)> answered);

    /// Asks in the next run, or in this one, as soon as `isReady` says so; the others go on. It is
    /// told whether that came to be within the run.
    void when(std::function<bool()> isReady, std::function<void(bool)> go);

    /// Returns when every call is answered, at most a budget from now. An endpoint that does not
    /// answer waits behind those that do, so that it takes none of their time. A receiver that
    /// calls again after a passing trouble has to stop by itself.
    void run();

private:
    class Exchange;
    struct Job;
    struct Transport;
    using Jobs = std::list<Job>;
    struct Wait {
        std::function<bool()> isReady{};
        std::function<void(bool)> go{};
    };

    bool isDone() const { return jobs_.empty() && waits_.empty(); }
    void letGo();
    void start();
    void progress();
    void finish(Jobs::iterator job, Answer answer);
    bool isPutOff(Job& job, const Trouble& trouble) const;
    void cutOff();
    double idleSeconds() const;

    Patience patience_;
    std::unique_ptr<Transport> transport_;
    std::map<std::string, int> burdens_{};  ///< an endpoint's calls under way or without an answer
    Jobs jobs_;
    std::list<Wait> waits_{};
    double end_{};  ///< of the run
};

}  // namespace tessary::aws
