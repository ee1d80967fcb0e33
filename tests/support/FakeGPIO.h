#pragma once

#include "platform/Gpio.h"
#include "platform/Time.h"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

/// A driver that keeps levels and writes down every drive. Lines exist as soon as they are named;
/// broken ones fail. Used from several threads.
class FakeGPIO : public IGPIO {
public:
    NVRHW_TRACKED

    using Line = std::pair<int, int>;

    int init() override { return 1; }
    int uninit() override { return 1; }

    int set(int group, int bit, int level) override {
        {
            const std::lock_guard<std::mutex> guard(m_Mutex);
            if (m_Broken[{group, bit}]) {
                return 0;
            }
            m_Levels[{group, bit}] = level;
            m_Journal += (m_Journal.empty() ? "" : " ") + std::to_string(milliseconds()) + ":" +
                         std::to_string(group) + "/" + std::to_string(bit) + "=" +
                         std::to_string(level);
        }
        if (m_OnDrive) {
            m_OnDrive({group, bit}, level);
        }
        return 1;
    }

    int get(int group, int bit, int& level) override {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        if (m_Broken[{group, bit}]) {
            return 0;
        }
        level = m_Levels[{group, bit}];
        return 1;
    }

    int get(const std::vector<IOInfo>& lines, std::vector<IOState>& states) override {
        states.clear();
        for (const IOInfo& line : lines) {
            int level = 0;
            if (get(line.getGroupId(), line.getBitPosion(), level) != 0) {
                states.emplace_back(line.getId(), level);
            }
        }
        if (m_OnBatch) {
            m_OnBatch();
        }
        return states.size() == lines.size() ? 1 : 0;
    }

    void setLevel(int group, int bit, int level) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Levels[{group, bit}] = level;
    }

    void breakLine(int group, int bit, bool broken = true) {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Broken[{group, bit}] = broken;
    }

    /// The drives since the last call, as "<ms>:<group>/<bit>=<level> ...".
    std::string takeJournal() {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return std::exchange(m_Journal, {});
    }

    /// The journal's time begins anew.
    void restartJournal() {
        takeJournal();
        m_Start = microseconds();
    }

    /// Called after each drive, in its thread; to be set while nobody drives.
    std::function<void(Line, int)> m_OnDrive;

    /// Called at the end of each batch read, in its thread.
    std::function<void()> m_OnBatch;

private:
    static std::int64_t microseconds() {
        const TarvikTime time = TarvikTime::currentTime();
        return std::int64_t{1000000} * time.getSeconds() + time.getMicroseconds();
    }
    std::int64_t milliseconds() const { return (microseconds() - m_Start) / 1000; }

    std::int64_t m_Start = microseconds();
    std::mutex m_Mutex;
    std::map<Line, int> m_Levels;
    std::map<Line, bool> m_Broken;
    std::string m_Journal;
};
