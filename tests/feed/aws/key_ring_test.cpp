#include "feed/aws/key_ring.h"

#include "feed/aws/sso_cache.h"
#include "support/golden.h"

namespace tessary::aws {
namespace {

namespace fs = std::filesystem;

constexpr double noon = 1731758400;

/// A machine with a made-up home and a fake `aws`, to which one line after another happens.
class Machine {
public:
    Machine() {
        fs::create_directories(home_ / ".aws/sso/cache");
        fs::create_directories(home_ / "bin");
        for (const auto& name : words("PROFILE DEFAULT_PROFILE CONFIG_FILE ACCESS_KEY_ID "
                                      "SHARED_CREDENTIALS_FILE SESSION_TOKEN"))
            ::unsetenv(("AWS_" + name).c_str());
        setVariable("HOME", (home_ / "").string());
        setVariable("LOG", (home_ / "log").string());
        writeProgram(
            "tell",
            R"(env | grep -oE '^(NOTIFY|WATCHDOG|AWS_.*(KEY|TOKEN|PA|PRO|MAX)).*=[a-z0-9]*' | sort)");
        becomes();
    }

    std::string takes(const std::string& line) {
        const auto cut = std::min(line.find(' '), line.size());
        const std::string verb = line.substr(0, cut);
        const std::string rest =
            replaced(unescaped(line.substr(std::min(cut + 1, line.size()))), " / ", "\n");
        const auto named = pairs(rest);
        if (verb == "keys") return asked(rest);
        if (verb == "at") now_ = std::stod(rest);
        if (verb == "slow") slow_ = std::stod(rest);
        if (verb == "forget") ring_->forget(rest, last_);
        if (verb == "environment") becomes(rest);
        if (verb == "signin")
            put("sso/cache/" + ssoCacheFile(named[0].first), rest.substr(rest.find('=') + 1));
        if (verb == "config" || verb == "credentials" || verb == "other") put(verb, rest);
        if (verb == "aws") fakes(rest);
        return "";
    }

private:
    void put(const std::string& name, const std::string& text) {
        const auto file = home_.write(".aws/" + name, text);
        fs::last_write_time(file, fs::file_time_type{std::chrono::seconds{++written_}});
    }
    /// "STATUS OUTPUT|||ERRORS", or nothing: it is not there.
    void fakes(const std::string& says) {
        const auto program = home_ / "bin/aws";
        fs::remove(program);
        setVariable("PATH",
                    program.parent_path().string() + (says.empty() ? "" : ":/usr/bin:/bin"));
        if (says.empty()) return;
        const auto cut = says.find("|||");
        home_.write("out", says.substr(says.find(' ') + 1, cut - says.find(' ') - 1));
        home_.write("err", says.substr(cut + 3));
        writeProgram("aws",
                     "echo \"> aws $*\" >>$LOG; cat $HOME/out; cat $HOME/err >&2\n"
                     "[ -z \"$TELL\" ] || tell >>$LOG; exit " +
                         says.substr(0, says.find(' ')));
    }
    void writeProgram(const std::string& name, const std::string& script) const {
        fs::permissions(home_.write("bin/" + name, "#!/bin/sh\n" + script + '\n'),
                        fs::perms::owner_all);
    }
    void becomes(const std::string& variables = "") {
        for (const auto& [name, value] : pairs(variables)) setVariable(name.c_str(), value);
        ring_.emplace(
            KeySources::ofEnvironment(), [this] { return foundation::Date{noon + now_}; },
            [this](const system::Errand& errand) {
                now_ += slow_;
                return system::runChild(errand);
            });
    }
    std::string asked(const std::string& profile) {
        fs::remove(home_ / "log");
        const auto keys = ring_->keysOf(profile);
        if (keys) last_ = *keys;
        return (keys ? found(*keys) : missing(keys.fault())) + '\n' + contents(home_ / "log");
    }
    static std::string ended(const std::optional<std::int64_t>& ms) {
        return ms ? " @" + std::to_string(*ms / 1000 - static_cast<std::int64_t>(noon)) : "";
    }
    static std::string found(const Keys& keys) {
        return keys.id + ' ' + keys.secret + ' ' + keys.token + ended(keys.endsMs);
    }
    std::string missing(const KeyFault& fault) const {
        EXPECT_EQ(fault.message().find("HUSH"), std::string::npos) << "it tells secrets";
        return (fault.authExpired ? "expired" : "failed") + ended(fault.endedMs) + ": " +
               replaced(fault.message(), (home_ / "").string(), "~/");
    }

    TemporaryFolder home_{};
    double now_{};
    double slow_{};
    int written_{};
    Keys last_{};
    std::optional<KeyRing> ring_{};
};

TEST(KeyRing, HandsOutKeysAsLongAsTheyHold) {
    Machine machine;
    expectTranscript("keys.txt", [&](const std::string& line) { return machine.takes(line); });
}

}  // namespace
}  // namespace tessary::aws
