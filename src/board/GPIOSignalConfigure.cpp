#include "board/ConfigError.h"
#include "board/XmlElement.h"
#include "platform/HardwareConfigure.h"

namespace {

constexpr char SOURCE[] = "GPIOSignalConfigure";
constexpr char SUBJECT[] = "HardwareConfig";

constexpr char ID[] = "id";
constexpr char GROUP[] = "group";
constexpr char BIT_POSITION[] = "bitPosition";
constexpr char VALID_LEVEL[] = "validLevel";

constexpr XmlElement::Range ANY{};
constexpr XmlElement::Range GROUPS{0, 32767};
constexpr XmlElement::Range BIT_POSITIONS{0, 65535};
constexpr XmlElement::Range LEVELS{0, 1};

SafePointer<HardwareConfigItem> readItem(const XmlElement& item) {
    if (item.name() != XmlElement::ITEM) {
        item.fail("not an item"); // a misspelled one must not get lost
    }
    const int id = item.require(ID, ANY);
    const int group = item.require(GROUP, GROUPS);
    const int bitPosition = item.require(BIT_POSITION, BIT_POSITIONS);
    const int validLevel = item.require(VALID_LEVEL, LEVELS);
    return SafePointer<HardwareConfigItem>(
        new (SOURCE, __LINE__) GPIOSignalConfigItem(id, group, bitPosition, validLevel));
}

} // namespace

int GPIOSignalConfigure::getConfig(SafePointer<HardwareConfigItemList>& list) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const XmlElement section = XmlElement::readRoot(m_ConfigFileName).child(m_ConfigName);
        const SafePointer<HardwareConfigItemList> items(new (SOURCE, __LINE__)
                                                            HardwareConfigItemList);
        for (const XmlElement& item : section.children()) {
            items->addHardwareConfigItem(readItem(item));
        }
        list = items;
    });
}
