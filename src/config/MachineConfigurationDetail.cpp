#include "config/MachineConfigurationDetail.h"

#include "config/ConfigFileNameConst.h"

namespace {

constexpr char SOURCE[] = "MachineConfigurationDetail";

using ItemList = SafePointer<HardwareConfigItemList>;

int readSection(const char* name, ItemList& list) {
    GPIOSignalConfigure reader;
    reader.setConfigName(name);
    reader.setConfigFileName(ConfigFileNameConst::getHardwareConfigFileName());
    return reader.getConfig(list);
}

} // namespace

class MachineConfigurationDetailData {
public:
    NVRHW_TRACKED

    MachineInfo m_MachineInfo;
    SoftwarePackage m_SoftwarePackage;
    ItemList m_RS485ConfigItemList;
    ItemList m_RS232ConfigItemList;
    ItemList m_AlarmInConfigItemList;
    ItemList m_AlarmOutConfigItemList;
    ItemList m_LEDConfigItemList;
};

// The parentheses matter: they zero the record before its members are constructed.
MachineConfigurationDetail::MachineConfigurationDetail()
    : m_Data(new (SOURCE, __LINE__) MachineConfigurationDetailData()) {}

MachineConfigurationDetail::~MachineConfigurationDetail() = default;

int MachineConfigurationDetail::init() {
    if (initHardwareConfig() == 0 || initMachineInfo() == 0) {
        return 0;
    }
    return initSoftwarePackage();
}

int MachineConfigurationDetail::initHardwareConfig() {
    const bool whole = readSection("GPIOAlarmIn", m_Data->m_AlarmInConfigItemList) != 0 &&
                       readSection("GPIOAlarmOut", m_Data->m_AlarmOutConfigItemList) != 0;
    return whole ? 1 : 0;
}

int MachineConfigurationDetail::initMachineInfo() {
    return SystemInfoParser::parseMachineInfo(ConfigFileNameConst::getMachineInfoFileName(),
                                              m_Data->m_MachineInfo);
}

int MachineConfigurationDetail::initSoftwarePackage() {
    return SoftwarePackageParser().parse(ConfigFileNameConst::getSoftwarePackageFileName(),
                                         m_Data->m_SoftwarePackage);
}

const MachineInfo& MachineConfigurationDetail::getMachineInfo() const {
    return m_Data->m_MachineInfo;
}

const SoftwarePackage& MachineConfigurationDetail::getSoftwarePackage() const {
    return m_Data->m_SoftwarePackage;
}

ItemList MachineConfigurationDetail::getAlarmInConfigItemList() const {
    return m_Data->m_AlarmInConfigItemList;
}

ItemList MachineConfigurationDetail::getAlarmOutConfigItemList() const {
    return m_Data->m_AlarmOutConfigItemList;
}

ItemList MachineConfigurationDetail::getLEDConfigItemList() const {
    return m_Data->m_LEDConfigItemList;
}

ItemList MachineConfigurationDetail::getRS232ConfigItemList() const {
    return m_Data->m_RS232ConfigItemList;
}

ItemList MachineConfigurationDetail::getRS485ConfigItemList() const {
    return m_Data->m_RS485ConfigItemList;
}
