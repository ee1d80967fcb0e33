#pragma once

#include "platform/base/Allocation.h"
#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// One line of a batch read: which line, and the id under which its state comes back.
class NVRHW_API IOInfo {
public:
    /// The id is the caller's, and comes back with the state; group and bit name the line.
    void setId(int id) { m_Id = id; }
    int getId() const { return m_Id; }
    void setGroupId(int group) { m_GroupId = group; }
    int getGroupId() const { return m_GroupId; }
    void setBitPosion(int bit) { m_BitPosion = bit; }
    int getBitPosion() const { return m_BitPosion; }

private:
    int m_Id = 0;
    int m_GroupId = 0;
    int m_BitPosion = 0;
};

/// The state of one line: the id it was asked under and its level, 0 or 1.
class NVRHW_API IOState {
public:
    IOState() = default;
    /// The state of the line that was asked for under this id.
    IOState(int id, int level) : m_Id(id), m_Level(level) {}

    /// The id of the IOInfo.
    void setId(int id) { m_Id = id; }
    int getId() const { return m_Id; }

    /// 0 or 1.
    void setLevel(int level) { m_Level = level; }
    int getLevel() const { return m_Level; }

private:
    int m_Id = 0;
    int m_Level = 0;
};

/// The GPIO driver. A line is named by its group (bank) and its bit within the group. Every
/// operation may be called from several threads at once and returns non-zero on success, 0 on
/// failure; a line that failed works again as soon as the cause is gone.
class NVRHW_API IGPIO {
public:
    virtual ~IGPIO() noexcept(false) {}

    /// Begins, and ends, the use of the device.
    virtual int init() = 0;
    virtual int uninit() = 0;

    /// Makes the line an output with this level: 0 is low, any other value high.
    virtual int set(int group, int bit, int level) = 0;

    /// Reads 0 or 1 into `level`, which a failed read leaves as it was.
    virtual int get(int group, int bit, int& level) = 0;

    /// Reads many lines. `states` is replaced by the states that could be read, in the order of
    /// `lines`; the result is non-zero only when all of them could.
    virtual int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) = 0;
};

/// The driver over the banks of one device: a directory with one entry per group.
class NVRHW_API GPIO : public IGPIO {
public:
    NVRHW_TRACKED

    GPIO();
    ~GPIO() noexcept override;

    /// 0 when the device is not there; the other operations then fail, and work from the moment
    /// it appears.
    int init() override;
    int uninit() override;
    int set(int group, int bit, int level) override;
    int get(int group, int bit, int& level) override;
    int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) override;

    /// The device; to be set before init(). Default "/dev/gpiodrv".
    std::string m_DeviceName;

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
