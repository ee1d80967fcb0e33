#pragma once

#include "platform/FixedText.h"
#include "platform/base/Export.h"

#include <vector>

// What the recorder's network cards can do, as the ability document states it: plain values like
// those of DeviceAbility.h.

/// A working mode of a network card and the settings it allows.
class NVRHW_API NetWorkingMode {
public:
    /// The number of the mode; what it means is the application's.
    int getWorkingType() const { return m_WorkingType; }
    void setWorkingType(int type) { m_WorkingType = type; }

    /// At most 63 bytes; a longer name is cut.
    const char* getWorkingName() const { return m_WorkingName.get(); }
    void setWorkingName(const char* name) { m_WorkingName.set(name); }

    /// What the mode lets a user set: the address, a DHCP server, a DHCP client, name servers.
    bool getSupportIpConfigFlag() const { return m_SupportIpConfigFlag; }
    void setSupportIpConfigFlag(bool flag) { m_SupportIpConfigFlag = flag; }
    bool getSupportDHCPServerFlag() const { return m_SupportDHCPServerFlag; }
    void setSupportDHCPServerFlag(bool flag) { m_SupportDHCPServerFlag = flag; }
    bool getSupportDHCPClientFlag() const { return m_SupportDHCPClientFlag; }
    void setSupportDHCPClientFlag(bool flag) { m_SupportDHCPClientFlag = flag; }
    bool getSupportDNSConfigFlag() const { return m_SupportDNSConfigFlag; }
    void setSupportDNSConfigFlag(bool flag) { m_SupportDNSConfigFlag = flag; }

    /// Power over Ethernet.
    bool getSupportPOEConfigFlag() const { return m_SupportPOEConfigFlag; }
    void setSupportPOEConfigFlag(bool flag) { m_SupportPOEConfigFlag = flag; }

private:
    int m_WorkingType = 0;
    FixedText<64> m_WorkingName;
    bool m_SupportIpConfigFlag = false;
    bool m_SupportDHCPServerFlag = false;
    bool m_SupportDHCPClientFlag = false;
    bool m_SupportDNSConfigFlag = false;
    bool m_SupportPOEConfigFlag = false;
};

/// One network card and its working modes, in the order of the document.
class NVRHW_API NetworkCardAbility {
public:
    /// The modes of one card.
    using Modes = std::vector<NetWorkingMode>;

    /// The number that the document gives it.
    int getNetworkCardId() const { return m_NetworkCardId; }
    void setNetworkCardId(int id) { m_NetworkCardId = id; }

    /// In the order of the document.
    const Modes& getNetWorkingModeList() const { return m_NetWorkingModeList; }
    void setNetWorkingModeList(const Modes& list) { m_NetWorkingModeList = list; }

private:
    int m_NetworkCardId = 0;
    Modes m_NetWorkingModeList;
};

/// The network cards, in the order of the document.
class NVRHW_API NetworkAbility {
public:
    /// One for each card.
    using Cards = std::vector<NetworkCardAbility>;

    /// As the document states it; it need not be the length of the list.
    int getNetworkCardNum() const { return m_NetworkCardNum; }
    void setNetworkCardNum(int number) { m_NetworkCardNum = number; }
    const Cards& getNetworkCardAbilityList() const { return m_NetworkCardAbilityList; }
    void setNetworkCardAbilityList(const Cards& list) { m_NetworkCardAbilityList = list; }

private:
    int m_NetworkCardNum = 0;
    Cards m_NetworkCardAbilityList;
};
