#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace nvrhw {

/// What waits for one reader: records of numbered sources, in their order, in memory that is made
/// once. When it is full, each source keeps its latest record only, which follows as soon as there
/// is room, unless it would repeat the one told before it. Not protected by a lock.
///
/// A Record has a `source`, a count `leftOut`, a `kind` and `repeats(kind)`: whether it tells
/// nothing new after a record of that kind.
template <typename Record> class Mailbox {
public:
    Mailbox(std::size_t capacity, std::size_t sources)
        : m_Ring(std::max<std::size_t>(capacity, 1)), m_Sources(sources) {
        m_Late.reserve(sources);
    }

    void post(Record record) {
        Source& source = m_Sources[record.source];
        if (source.late.has_value()) {
            record.leftOut += source.late->leftOut + 1;
            source.late = std::move(record);
        } else if (m_Count == m_Ring.size()) {
            m_Late.push_back(record.source);
            source.late = std::move(record);
        } else {
            append(source, std::move(record));
        }
    }

    /// Takes the oldest record; false when there is none.
    bool take(Record& out) {
        if (m_Count == 0) {
            return false;
        }
        out = std::move(m_Ring[m_First]);
        m_First = (m_First + 1) % m_Ring.size();
        --m_Count;
        refill();
        return true;
    }

    bool isEmpty() const { return m_Count == 0; }

private:
    struct Source {
        std::optional<decltype(Record::kind)> lastKind{}; // of those that came into the ring
        std::optional<Record> late{};                     // the latest one without room
        unsigned leftOut = 0;                             // to be told with the next one
    };

    void append(Source& source, Record record) {
        record.leftOut += std::exchange(source.leftOut, 0);
        source.lastKind = record.kind;
        m_Ring[(m_First + m_Count) % m_Ring.size()] = std::move(record);
        ++m_Count;
    }

    void refill() {
        while (m_Count < m_Ring.size() && !m_Late.empty()) {
            Source& source = m_Sources[m_Late.front()];
            m_Late.erase(m_Late.begin());
            Record record = std::move(*std::exchange(source.late, std::nullopt));
            if (source.lastKind.has_value() && record.repeats(*source.lastKind)) {
                source.leftOut += record.leftOut + 1;
            } else {
                append(source, std::move(record));
            }
        }
    }

    std::vector<Record> m_Ring;
    std::size_t m_First = 0;
    std::size_t m_Count = 0;
    std::vector<Source> m_Sources;
    std::vector<std::size_t> m_Late; // the sources with a late record, in the order they got one
};

} // namespace nvrhw
