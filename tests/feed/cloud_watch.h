// The CloudWatch on loopback, for as long as a test needs it.
#pragma once

#include <cstdio>
#include <sys/stat.h>

#include "support/fixtures.h"

namespace tessary {

class CloudWatch {
public:
    explicit CloudWatch(const std::string& state) {
        set(state);
        setVariable("no_proxy", "127.0.0.1");
        const auto ports = folder_ / "ports";
        ::mkfifo(ports.c_str(), 0600);
        const std::string words =
            " '" TESSARY_CLOUDWATCH "' " + state_ + ' ' + certificate() + " >";
        process_ = ::popen(("/usr/bin/python3" + words + ports.string()).c_str(), "w");
        std::ifstream{ports} >> port >> securePort;
    }
    CloudWatch(const CloudWatch&) = delete;
    ~CloudWatch() { ::pclose(process_); }

    /// From the next request on.
    void set(const std::string& state) const {
        std::filesystem::rename(folder_.write("new", state), state_);
    }
    std::string certificate() const { return folder_ / "certificate.pem"; }

    std::string port{}, securePort{};

private:
    TemporaryFolder folder_{};
    std::string state_ = folder_ / "state.json";
    FILE* process_{};
};

}  // namespace tessary
