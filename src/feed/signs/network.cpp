#include "feed/signs/network.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace tessary::signs {

namespace {

/// A message's contents, which lie behind its header.
template <class Content>
Content contentOf(const char* message) {
    Content content;
    std::memcpy(&content, message + NLMSG_HDRLEN, sizeof content);
    return content;
}

/// An address of more than this machine, or a route to anywhere.
bool isNetwork(const nlmsghdr& header, const char* message) {
    if (header.nlmsg_type == RTM_NEWADDR && header.nlmsg_len >= NLMSG_HDRLEN + sizeof(ifaddrmsg))
        return contentOf<ifaddrmsg>(message).ifa_scope < RT_SCOPE_LINK;
    if (header.nlmsg_type == RTM_NEWROUTE && header.nlmsg_len >= NLMSG_HDRLEN + sizeof(rtmsg)) {
        const auto route = contentOf<rtmsg>(message);
        return route.rtm_dst_len == 0 && route.rtm_type == RTN_UNICAST;
    }
    return false;
}

bool holdNetwork(const char* messages, std::size_t size) {
    for (std::size_t at = 0; at + NLMSG_HDRLEN <= size;) {
        nlmsghdr header;
        std::memcpy(&header, messages + at, sizeof header);
        if (header.nlmsg_len < NLMSG_HDRLEN || header.nlmsg_len > size - at) return false;
        if (isNetwork(header, messages + at)) return true;
        at += NLMSG_ALIGN(header.nlmsg_len);
    }
    return false;
}

}  // namespace

Network::Network()
    : socket_(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE)) {
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups =
        RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    const auto* const bound = reinterpret_cast<const sockaddr*>(&address);
    if (::bind(descriptor(), bound, sizeof address) != 0) socket_ = system::Descriptor{};
}

bool Network::hasCome() const {
    bool hasCome = false;
    std::array<char, 16384> room;
    for (;;) {
        const auto count = system::uninterrupted(
            [&] { return ::recv(descriptor(), room.data(), room.size(), 0); });
        if (count < 0 && errno == ENOBUFS) hasCome = true;  // more came than was kept: it may have
        if (count <= 0 && !(count < 0 && errno == ENOBUFS)) return hasCome;
        if (count > 0 && holdNetwork(room.data(), static_cast<std::size_t>(count))) hasCome = true;
    }
}

}  // namespace tessary::signs
