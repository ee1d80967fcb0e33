#pragma once

#include "platform/Gpio.h"
#include "platform/GpioDetect.h"
#include "platform/System.h"
#include "support/Gate.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <utility>
#include <vector>

using Lines = std::vector<std::pair<int, int>>; // groups and bits

/// A detector whose handler reads the watched lines in one batch.
class LineObserver {
public:
    LineObserver(GPIO& gpio, int number, const Lines& lines)
        : m_Gpio(gpio), m_Seen(lines.size(), -1) {
        s_Observers[number] = this;
        EXPECT_EQ(m_Detect.open() + m_Detect.setSignalHandler(number, handle), 0);
        for (const auto& [group, bit] : lines) {
            EXPECT_EQ(m_Detect.addDetectLine(SystemHelper::getPid(), group, bit), 0);
            IOInfo info;
            info.setId(static_cast<int>(m_Infos.size()));
            info.setGroupId(group);
            info.setBitPosion(bit);
            m_Infos.push_back(info);
        }
        look();
        EXPECT_EQ(m_Detect.startDetect(), 0);
    }
    ~LineObserver() { m_Detect.close(); }
    LineObserver(const LineObserver&) = delete;
    LineObserver& operator=(const LineObserver&) = delete;

    /// Waits until these levels were seen last; -1 is a line that could not be read.
    bool waitFor(const std::vector<int>& levels) {
        for (int calls = m_Calls.count();; ++calls) {
            const std::vector<int> seen = last();
            if (seen == levels || !m_Calls.wait(calls + 1)) {
                return last() == levels;
            }
        }
    }

    std::vector<int> last() {
        const std::lock_guard<std::mutex> guard(m_Mutex);
        return m_Seen;
    }

    std::function<void()> m_Action = [] {}; ///< what the handler does first
    std::atomic<int> m_EverHigh{0};         ///< how often line 0 was seen high

private:
    static void handle(int number) {
        s_Observers[number]->m_Action();
        s_Observers[number]->look();
        s_Observers[number]->m_Calls.open();
    }

    void look() {
        std::vector<IOState> states;
        m_Gpio.get(m_Infos, states);
        const std::lock_guard<std::mutex> guard(m_Mutex);
        std::fill(m_Seen.begin(), m_Seen.end(), -1);
        for (const IOState& state : states) {
            m_Seen[static_cast<std::size_t>(state.getId())] = state.getLevel();
        }
        m_EverHigh += m_Seen[0] == 1 ? 1 : 0;
    }

    static inline LineObserver* s_Observers[32] = {};

    GPIO& m_Gpio;
    GPIODetect m_Detect;
    std::vector<IOInfo> m_Infos;
    std::mutex m_Mutex;
    std::vector<int> m_Seen;
    Gate m_Calls;
};
