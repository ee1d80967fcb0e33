#include "board/gpio/bank/GPIOLineSettingsTable.h"

#include "platform/base/Mutex.h"

#include <map>
#include <utility>

namespace {

constexpr char SOURCE[] = "GPIOLineSettingsTable";

struct Table {
    XQMutex mutex;
    std::map<std::pair<int, int>, GPIOLineSettings> lines NVRHW_GUARDED_BY(mutex);
};

Table& table() {
    static Table* const instance = new Table; // lines may be used until the very end
    return *instance;
}

} // namespace

void GPIOLineSettingsTable::set(int group, int bit, const GPIOLineSettings& settings) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    known.lines[{group, bit}] = settings;
}

GPIOLineSettings GPIOLineSettingsTable::get(int group, int bit) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    const auto found = known.lines.find({group, bit});
    return found != known.lines.end() ? found->second : GPIOLineSettings();
}

int GPIOLineSettingsTable::debounceOf(int group, int bit) {
    Table& known = table();
    const XQMutexManager guard(known.mutex, SOURCE, __LINE__);
    const auto found = known.lines.find({group, bit});
    return found != known.lines.end() ? found->second.debounce : 0;
}
