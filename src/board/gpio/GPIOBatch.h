#pragma once

#include "board/gpio/bank/GPIOBank.h"

#include <algorithm>
#include <memory>
#include <vector>

/// Lines to be read together. What it takes in memory it keeps for the next time. Not thread-safe.
class GPIOBatch {
public:
    /// The lines of one group, and the bank while they are being read.
    struct Group {
        int number;
        std::shared_ptr<GPIOBank> bank{};
        std::vector<GPIOReading*> readings{};
    };

    /// By their places, to be gone through once all have been set.
    std::vector<GPIOReading>& readings() { return m_Readings; }

    /// Begins anew with so many lines, to be set one by one.
    void begin(std::size_t lines) { m_Readings.resize(lines); }

    void set(std::size_t place, int group, int bit) {
        GPIOReading& reading = m_Readings[place];
        reading.group = group;
        reading.bit = bit;
        if (reading.cause) {
            reading.cause = Cause();
        }
    }

    /// The lines by their groups; some may have none.
    std::vector<Group>& groups() {
        for (Group& group : m_Groups) {
            group.readings.clear();
        }
        Group* last = nullptr; // most often that of the line before
        for (GPIOReading& reading : m_Readings) {
            if (last == nullptr || last->number != reading.group) {
                last = &find(reading.group);
            }
            last->readings.push_back(&reading);
        }
        return m_Groups;
    }

private:
    Group& find(int number) {
        const auto place =
            std::lower_bound(m_Groups.begin(), m_Groups.end(), number,
                             [](const Group& group, int wanted) { return group.number < wanted; });
        const bool isThere = place != m_Groups.end() && place->number == number;
        return isThere ? *place : *m_Groups.insert(place, Group{number});
    }

    std::vector<GPIOReading> m_Readings;
    std::vector<Group> m_Groups; // by number
};
