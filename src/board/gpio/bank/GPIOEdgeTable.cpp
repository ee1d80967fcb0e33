#include "board/gpio/bank/GPIOEdgeTable.h"

#include "platform/base/Mutex.h"

#include <limits>
#include <map>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIOEdgeTable";

struct Table {
    XQMutex mutex;
    std::map<std::pair<int, int>, std::int64_t> edges NVRHW_GUARDED_BY(mutex); // by group and bit
};

Table& table() {
    static Table* const instance = new Table; // lines may be used until the very end
    return *instance;
}

} // namespace

void GPIOEdgeTable::note(int group, int bit, std::uint64_t nanoseconds) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    known.edges[{group, bit}] = static_cast<std::int64_t>(nanoseconds);
}

bool GPIOEdgeTable::find(int group, int bit, std::int64_t& nanoseconds) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    const auto found = known.edges.find({group, bit});
    if (found == known.edges.end()) {
        return false;
    }
    nanoseconds = found->second;
    return true;
}

void GPIOEdgeTable::forget(int group) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    known.edges.erase(known.edges.lower_bound({group, 0}),
                      known.edges.upper_bound({group, std::numeric_limits<int>::max()}));
}
