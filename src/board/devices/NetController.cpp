#include "platform/NetController.h"

#include "board/devices/SysfsAttribute.h"
#include "board/runtime/ErrnoText.h"
#include "platform/Diagnostics.h"

#include <algorithm>
#include <arpa/inet.h>
#include <bitset>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <net/if_arp.h>
#include <netpacket/packet.h>

namespace {

constexpr char SOURCE[] = "NetController";
constexpr char SYSFS[] = "/sys/class/net/";

using AddressList = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

template <typename Address> const Address& as(const sockaddr* address) {
    return *reinterpret_cast<const Address*>(address); // every family's begins as a sockaddr
}

std::string macOf(const sockaddr_ll& link) {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    if (link.sll_hatype == ARPHRD_ETHER && link.sll_halen == 6) {
        for (int i = 0; i < 6; ++i) {
            text += i == 0 ? "" : ":";
            text += DIGITS[link.sll_addr[i] >> 4];
            text += DIGITS[link.sll_addr[i] & 0xF];
        }
    }
    return text;
}

NetInterface interfaceOf(const ifaddrs& entry) {
    const auto& link = as<sockaddr_ll>(entry.ifa_addr);
    const std::string folder = SYSFS + std::string(entry.ifa_name);
    NetInterface made;
    made.index = link.sll_ifindex;
    made.name = entry.ifa_name;
    made.mac = macOf(link);
    made.isUp = (entry.ifa_flags & IFF_UP) != 0;
    made.isRunning = (entry.ifa_flags & IFF_RUNNING) != 0;
    made.speed = SysfsAttribute::readNumber(folder + "/speed");
    made.mtu = SysfsAttribute::readNumber(folder + "/mtu");
    return made;
}

template <typename Bytes>
NetAddress addressOf(int family, const Bytes& address, const Bytes& mask) {
    char text[INET6_ADDRSTRLEN] = "";
    inet_ntop(family, &address, text, sizeof text);
    NetAddress made;
    made.address = text;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&mask);
    for (std::size_t i = 0; i < sizeof mask; ++i) {
        made.prefixLength += static_cast<int>(std::bitset<8>(bytes[i]).count());
    }
    return made;
}

void addAddress(const ifaddrs& entry, NetInterface& owner) {
    if (entry.ifa_addr->sa_family == AF_INET) {
        owner.ipv4.push_back(addressOf(AF_INET, as<sockaddr_in>(entry.ifa_addr).sin_addr,
                                       as<sockaddr_in>(entry.ifa_netmask).sin_addr));
    } else if (entry.ifa_addr->sa_family == AF_INET6) {
        owner.ipv6.push_back(addressOf(AF_INET6, as<sockaddr_in6>(entry.ifa_addr).sin6_addr,
                                       as<sockaddr_in6>(entry.ifa_netmask).sin6_addr));
    }
}

std::vector<NetInterface> interfacesOf(const AddressList& list) {
    std::vector<NetInterface> interfaces;
    for (const ifaddrs* entry = list.get(); entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_PACKET) {
            interfaces.push_back(interfaceOf(*entry));
        }
    }
    for (const ifaddrs* entry = list.get(); entry != nullptr; entry = entry->ifa_next) {
        // An IPv4 address may have a label of its own, "eth0:1".
        const std::string label = entry->ifa_name;
        const std::string name = label.substr(0, label.find(':'));
        const auto owner =
            std::find_if(interfaces.begin(), interfaces.end(),
                         [&](const NetInterface& candidate) { return candidate.name == name; });
        if (owner != interfaces.end() && entry->ifa_addr != nullptr &&
            entry->ifa_netmask != nullptr) {
            addAddress(*entry, *owner);
        }
    }
    std::sort(interfaces.begin(), interfaces.end(),
              [](const NetInterface& a, const NetInterface& b) { return a.index < b.index; });
    return interfaces;
}

} // namespace

struct NetController::Impl {}; // the kernel keeps it all

NetController::NetController() = default;

NetController::~NetController() = default;

int NetController::getInterfaces(std::vector<NetInterface>& interfaces) {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        Logger::writeLog(SOURCE, errnoText("the network interfaces").c_str(), SOURCE, __LINE__);
        return 0;
    }
    interfaces = interfacesOf(AddressList(first, &freeifaddrs));
    return 1;
}

int NetController::getInterface(const std::string& name, NetInterface& found) {
    std::vector<NetInterface> interfaces;
    if (getInterfaces(interfaces) == 0) {
        return 0;
    }
    const auto match =
        std::find_if(interfaces.begin(), interfaces.end(),
                     [&](const NetInterface& candidate) { return candidate.name == name; });
    if (match == interfaces.end()) {
        return 0;
    }
    found = *match;
    return 1;
}
