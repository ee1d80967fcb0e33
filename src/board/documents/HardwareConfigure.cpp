#include "platform/HardwareConfigure.h"

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"
#include "board/gpio/bank/GPIOLineSettingsTable.h"

namespace {

constexpr char SOURCE[] = "GPIOSignalConfigure";
constexpr char SUBJECT[] = "HardwareConfig";

constexpr char ID[] = "id";
constexpr char GROUP[] = "group";
constexpr char BIT_POSITION[] = "bitPosition";
constexpr char VALID_LEVEL[] = "validLevel";
constexpr char NAME[] = "name";
constexpr char DEBOUNCE[] = "debounce";
constexpr char BIAS[] = "bias";
constexpr char DRIVE[] = "drive";

constexpr XmlElement::Range ANY{};
constexpr XmlElement::Range GROUPS{0, 32767};
constexpr XmlElement::Range BIT_POSITIONS{0, 65535};
constexpr XmlElement::Range LEVELS{0, 1};
constexpr XmlElement::Range DEBOUNCES{0, 10000};

// In the order of GPIOLineSettings::Bias and Drive, behind the value for none.
const std::vector<std::string>& biases() {
    static const std::vector<std::string> texts{"pull-up", "pull-down", "disabled"};
    return texts;
}

const std::vector<std::string>& drives() {
    static const std::vector<std::string> texts{"push-pull", "open-drain", "open-source"};
    return texts;
}

GPIOLineSettings readSettings(const XmlElement& item) {
    GPIOLineSettings settings;
    int place = 0;
    item.read(NAME, settings.name);
    item.read(DEBOUNCE, settings.debounce, DEBOUNCES);
    if (item.read(BIAS, biases(), place)) {
        settings.bias = static_cast<GPIOLineSettings::Bias>(place + 1);
    }
    if (item.read(DRIVE, drives(), place)) {
        settings.drive = static_cast<GPIOLineSettings::Drive>(place + 1);
    }
    return settings;
}

SafePointer<GPIOSignalConfigItem> readItem(const XmlElement& item) {
    if (item.name() != XmlElement::ITEM) {
        item.fail("not an item"); // a misspelled one must not get lost
    }
    const int id = item.require(ID, ANY);
    const int group = item.require(GROUP, GROUPS);
    const int bitPosition = item.require(BIT_POSITION, BIT_POSITIONS);
    const int validLevel = item.require(VALID_LEVEL, LEVELS);
    return SafePointer<GPIOSignalConfigItem>(new (SOURCE, __LINE__) GPIOSignalConfigItem(
        id, group, bitPosition, validLevel, readSettings(item)));
}

} // namespace

int GPIOSignalConfigure::getConfig(SafePointer<HardwareConfigItemList>& list) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const XmlElement section = XmlElement::readRoot(m_ConfigFileName).child(m_ConfigName);
        const SafePointer<HardwareConfigItemList> items(new (SOURCE, __LINE__)
                                                            HardwareConfigItemList);
        std::vector<SafePointer<GPIOSignalConfigItem>> signals;
        for (const XmlElement& item : section.children()) {
            signals.push_back(readItem(item));
            items->addHardwareConfigItem(SafePointer<HardwareConfigItem>(signals.back()));
        }
        for (const auto& signal : signals) {
            GPIOLineSettingsTable::set(signal->getGroup(), signal->getBitPosition(),
                                       signal->getSettings());
        }
        list = items;
    });
}
