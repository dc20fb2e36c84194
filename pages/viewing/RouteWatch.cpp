#include "pages/viewing/RouteWatch.h"

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// Whether one of the messages in the first `size` of these bytes tells of a new default route.
bool hasDefaultRoute(const char* bytes, std::size_t size)
{
    nlmsghdr head = {};
    rtmsg route = {};
    while (size >= NLMSG_HDRLEN) {
        std::memcpy(&head, bytes, sizeof head);
        if (head.nlmsg_len < NLMSG_HDRLEN || head.nlmsg_len > size)
            return false;
        if (head.nlmsg_type == RTM_NEWROUTE && head.nlmsg_len >= NLMSG_LENGTH(sizeof route)) {
            std::memcpy(&route, bytes + NLMSG_HDRLEN, sizeof route);
            if (route.rtm_dst_len == 0 && route.rtm_table == RT_TABLE_MAIN)
                return true;
        }
        const std::size_t whole = std::min<std::size_t>(NLMSG_ALIGN(head.nlmsg_len), size);
        bytes += whole;
        size -= whole;
    }
    return false;
}

} // namespace

RouteWatch::RouteWatch(QObject* parent)
    : QObject(parent),
      m_socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE))
{
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE;
    if (m_socket < 0 ||
        ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &RouteWatch::read);
}

RouteWatch::~RouteWatch()
{
    m_notifier.reset(); // before what it looks at
    if (m_socket >= 0)
        ::close(m_socket);
}

void RouteWatch::read()
{
    std::array<char, 16384> bytes = {};
    bool isAdded = false;
    for (;;) {
        const ssize_t size = ::recv(m_socket, bytes.data(), bytes.size(), 0);
        if (size > 0)
            isAdded = hasDefaultRoute(bytes.data(), static_cast<std::size_t>(size)) || isAdded;
        else if (size < 0 && errno == ENOBUFS)
            isAdded = true; // there was more than the kernel keeps
        else if (size == 0 || errno != EINTR)
            break;
    }
    if (isAdded)
        emit routeAdded();
}
