#include "feed/signs/network.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace tessary::signs {
namespace {

/// Gives the loopback device of a world without networks an address, or takes it away.
bool setAddress(const char* text) {
    const system::Descriptor socket{::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
    ifreq request{};
    std::string{"lo"}.copy(request.ifr_name, sizeof request.ifr_name);
    auto& address = reinterpret_cast<sockaddr_in&>(request.ifr_addr);
    address.sin_family = AF_INET;
    ::inet_pton(AF_INET, text, &address.sin_addr);
    return ::ioctl(socket.number(), SIOCSIFADDR, &request) == 0;
}

/// In a process of its own, which leaves this one's networks for good.
void join() {
    // Whoever is root needs no world of users besides, and gets none in a folder that is its root.
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0 && ::unshare(CLONE_NEWNET) != 0) std::_Exit(2);
    const Network network;
    bool isRight = network.descriptor() >= 0 && !network.hasCome();
    isRight = isRight && setAddress("127.0.0.1") && !network.hasCome();
    isRight = isRight && setAddress("10.1.2.3") && network.hasCome() && !network.hasCome();
    isRight = isRight && setAddress("0.0.0.0") && !network.hasCome();
    std::_Exit(isRight ? 0 : 1);
}

TEST(Network, HasComeWithAnAddressOfMoreThanThisMachine) {
    EXPECT_EXIT(join(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tessary::signs
