#pragma once

#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// An address of a network interface.
struct NVRHW_API NetAddress {
    std::string address;  ///< numeric, such as "192.0.2.7" or "fe80::1"
    int prefixLength = 0; ///< bits: up to 32 for IPv4 and up to 128 for IPv6
};

/// A network interface as it was when it was asked for.
struct NVRHW_API NetInterface {
    int index = 0;     ///< the kernel's, from 1
    std::string name;  ///< such as "eth0"
    std::string mac;   ///< such as "02:00:5e:10:00:01"; empty when it has none, as the loopback
    bool isUp = false; ///< switched on
    bool isRunning = false;       ///< switched on and connected, so that it can carry data
    int speed = -1;               ///< Mbit/s; -1 when unknown, as without a cable
    int mtu = -1;                 ///< bytes; -1 when unknown
    std::vector<NetAddress> ipv4; ///< empty when it has none, as all lists
    std::vector<NetAddress> ipv6; ///< link-local ones included
};

/// The network interfaces of the machine. It only looks, and changes nothing. Every operation may
/// be called from several threads at once.
class NVRHW_API INetController {
public:
    virtual ~INetController() = default;

    /// Replaces `interfaces` by all there are, in the order of their indices: 1 on success; 0, with
    /// the cause in the log and `interfaces` as it was, when the kernel does not tell.
    virtual int getInterfaces(std::vector<NetInterface>& interfaces) = 0;

    /// Fills `found` with the interface of this name: 1 when there is one, else 0 with `found` as
    /// it was. That there is none is an answer and not logged.
    virtual int getInterface(const std::string& name, NetInterface& found) = 0;
};

/// What the running kernel knows, also when another root directory is set.
class NVRHW_API NetController : public INetController {
public:
    NVRHW_TRACKED

    NetController();
    ~NetController() override;
    int getInterfaces(std::vector<NetInterface>& interfaces) override;
    int getInterface(const std::string& name, NetInterface& found) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
