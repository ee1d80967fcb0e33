#include "platform/HardwareConfigure.h"

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/gpio/bank/GPIOLineSettingsTable.h"

namespace {

using Schema = HardwareSchema;

constexpr char SOURCE[] = "GPIOSignalConfigure";
constexpr char SUBJECT[] = "HardwareConfig";

GPIOLineSettings readSettings(const XmlElement& item) {
    GPIOLineSettings settings;
    settings.name = item.text(Schema::NAME);
    settings.debounce = item.number(Schema::DEBOUNCE);
    settings.bias = static_cast<GPIOLineSettings::Bias>(item.choice(Schema::BIAS));
    settings.drive = static_cast<GPIOLineSettings::Drive>(item.choice(Schema::DRIVE));
    return settings;
}

SafePointer<GPIOSignalConfigItem> readItem(const XmlElement& item) {
    if (item.name() != XmlElement::ITEM) {
        item.fail("not an item"); // a misspelled one must not get lost
    }
    const int id = item.number(Schema::ID);
    const int group = item.number(Schema::GROUP);
    const int bitPosition = item.number(Schema::BIT_POSITION);
    const int validLevel = item.number(Schema::VALID_LEVEL);
    return SafePointer<GPIOSignalConfigItem>(new (SOURCE, __LINE__) GPIOSignalConfigItem(
        id, group, bitPosition, validLevel, readSettings(item)));
}

} // namespace

struct GPIOSignalConfigure::Impl {
    std::string section;
    std::string fileName;
};

GPIOSignalConfigure::GPIOSignalConfigure() : m_Impl(new Impl) {}

GPIOSignalConfigure::~GPIOSignalConfigure() = default;

void GPIOSignalConfigure::setConfigName(const std::string& name) { m_Impl->section = name; }

void GPIOSignalConfigure::setConfigFileName(const std::string& fileName) {
    m_Impl->fileName = fileName;
}

int GPIOSignalConfigure::getConfig(SafePointer<HardwareConfigItemList>& list) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const XmlElement section = XmlElement::readRoot(m_Impl->fileName).child(m_Impl->section);
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
