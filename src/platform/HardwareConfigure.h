#pragma once

#include "foundation/SafePointer.h"
#include "platform/Allocation.h"
#include "platform/Export.h"

#include <list>
#include <string>

/// One item of the hardware configuration.
class NVRHW_API HardwareConfigItem {
public:
    enum Type { GPIO_SIGNAL = 1 };

    virtual ~HardwareConfigItem() noexcept(false) {}
    virtual int getType() const = 0;
    virtual int getId() const = 0;
};

/// A GPIO line with a purpose: an alarm input or output.
class NVRHW_API GPIOSignalConfigItem : public HardwareConfigItem {
public:
    NVRHW_TRACKED

    GPIOSignalConfigItem(int id, int group, int bitPosition, int validLevel)
        : m_Id(id), m_Group(group), m_BitPosition(bitPosition), m_ValidLevel(validLevel) {}

    int getType() const override { return GPIO_SIGNAL; }
    int getId() const override { return m_Id; }
    int getGroup() const { return m_Group; }
    int getBitPosition() const { return m_BitPosition; }

    /// The level, 0 or 1, at which the line is active.
    int getValidLevel() const { return m_ValidLevel; }

private:
    int m_Id;
    int m_Group;
    int m_BitPosition;
    int m_ValidLevel;
};

/// The items of one section, in the order of the document.
class NVRHW_API HardwareConfigItemList {
public:
    NVRHW_TRACKED

    using Items = std::list<SafePointer<HardwareConfigItem>>;

    const Items& getHardwareConfigItemList() const { return m_Items; }
    void addHardwareConfigItem(const SafePointer<HardwareConfigItem>& item) {
        m_Items.push_back(item);
    }

private:
    Items m_Items;
};

/// Reads one section of a hardware configuration file.
class NVRHW_API IHardwareConfigure {
public:
    virtual ~IHardwareConfigure() = default;

    /// Selects the section by its name.
    virtual void setConfigName(const std::string& name) = 0;

    /// Selects the file.
    virtual void setConfigFileName(const std::string& fileName) = 0;

    /// Reads the selected section into a new list: non-zero on success; 0, with the cause in the
    /// log and `list` untouched, when the section cannot be read whole.
    virtual int getConfig(SafePointer<HardwareConfigItemList>& list) = 0;
};

/// Reads a section of GPIO lines:
///
///     <GPIOAlarmIn>
///         <item id="1" group="0" bitPosition="4" validLevel="1"/>
///     </GPIOAlarmIn>
///
/// All four attributes are required in every item: id (any int), group (0 to 32767), bitPosition
/// (0 to 65535), validLevel (0 or 1). One bad item fails the section: a wrong line must never be
/// driven. A section without items is an empty list; a missing section is a failure.
class NVRHW_API GPIOSignalConfigure : public IHardwareConfigure {
public:
    void setConfigName(const std::string& name) override { m_ConfigName = name; }
    void setConfigFileName(const std::string& fileName) override { m_ConfigFileName = fileName; }
    int getConfig(SafePointer<HardwareConfigItemList>& list) override;

private:
    std::string m_ConfigName;
    std::string m_ConfigFileName;
};
