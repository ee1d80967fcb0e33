#pragma once

#include "foundation/SafePointer.h"
#include "platform/GPIOLineSettings.h"
#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <list>
#include <memory>
#include <string>
#include <utility>

/// One item of the hardware configuration.
class NVRHW_API HardwareConfigItem {
public:
    /// What kind of line an item describes.
    enum Type { GPIO_SIGNAL = 1 };

    virtual ~HardwareConfigItem() noexcept(false) {}

    /// A Type, and the number under which the application knows the line.
    virtual int getType() const = 0;
    virtual int getId() const = 0;
};

/// A GPIO line with a purpose: an alarm input or output.
class NVRHW_API GPIOSignalConfigItem : public HardwareConfigItem {
public:
    NVRHW_TRACKED

    /// Keeps what it is given: the ranges are checked where a file is read.
    GPIOSignalConfigItem(int id, int group, int bitPosition, int validLevel,
                         GPIOLineSettings settings = GPIOLineSettings())
        : m_Id(id), m_Group(group), m_BitPosition(bitPosition), m_ValidLevel(validLevel),
          m_Settings(std::move(settings)) {}

    /// As the base.
    int getType() const override { return GPIO_SIGNAL; }
    int getId() const override { return m_Id; }

    /// The line.
    int getGroup() const { return m_Group; }
    int getBitPosition() const { return m_BitPosition; }

    /// The level, 0 or 1, at which the line is active.
    int getValidLevel() const { return m_ValidLevel; }

    /// How the line is called and wired.
    const GPIOLineSettings& getSettings() const { return m_Settings; }

private:
    int m_Id;
    int m_Group;
    int m_BitPosition;
    int m_ValidLevel;
    GPIOLineSettings m_Settings;
};

/// The items of one section, in the order of the document.
class NVRHW_API HardwareConfigItemList {
public:
    NVRHW_TRACKED

    /// The items, shared with whoever copies the pointers.
    using Items = std::list<SafePointer<HardwareConfigItem>>;

    /// A section may have none.
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

/// Reads a section of GPIO lines into GPIOSignalConfigItems. One bad item fails the section: a
/// wrong line must never be driven. A section without items is an empty list; a missing section is
/// a failure. docs/configuration.md has the file.
///
/// A section that was read whole makes its settings those of its lines in this process, for every
/// use from then on; of several items for a line the last counts.
class NVRHW_API GPIOSignalConfigure : public IHardwareConfigure {
public:
    GPIOSignalConfigure();
    ~GPIOSignalConfigure() override;

    void setConfigName(const std::string& name) override;
    void setConfigFileName(const std::string& fileName) override;
    int getConfig(SafePointer<HardwareConfigItemList>& list) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
