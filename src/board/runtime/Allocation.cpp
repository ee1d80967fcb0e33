#include "platform/base/Allocation.h"

#include "platform/base/Mutex.h"

#include <algorithm>
#include <new>
#include <unordered_map>

namespace {

constexpr char SOURCE[] = "AllocationLedger";

struct Entry {
    std::size_t size;
    std::string file;
    int line;
    unsigned long sequence;
};

struct Ledger {
    XQMutex mutex;
    std::unordered_map<const void*, Entry> entries NVRHW_GUARDED_BY(mutex);
    unsigned long lastSequence NVRHW_GUARDED_BY(mutex) = 0;
};

Ledger& ledger() {
    static Ledger* const instance = new Ledger; // objects may be deleted until the very end
    return *instance;
}

} // namespace

std::vector<Allocation> AllocationLedger::outstanding() {
    std::vector<std::pair<unsigned long, Allocation>> found;
    {
        Ledger& book = ledger();
        const XQMutexManager guard(book.mutex, SOURCE, __LINE__);
        for (const auto& [address, entry] : book.entries) {
            found.push_back({entry.sequence, {address, entry.size, entry.file, entry.line}});
        }
    }
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Allocation> ordered;
    ordered.reserve(found.size());
    for (auto& item : found) {
        ordered.push_back(std::move(item.second));
    }
    return ordered;
}

void* AllocationLedger::allocate(std::size_t size, const char* file, int line) {
    void* memory = ::operator new(size);
    try {
        Ledger& book = ledger();
        const XQMutexManager guard(book.mutex, SOURCE, __LINE__);
        book.entries[memory] = {size, file, line, ++book.lastSequence};
    } catch (...) {
        ::operator delete(memory);
        throw;
    }
    return memory;
}

void AllocationLedger::release(void* memory) noexcept {
    if (memory == nullptr) {
        return;
    }
    {
        // Struck off before the memory can be given to somebody else.
        Ledger& book = ledger();
        const XQMutexManager guard(book.mutex, SOURCE, __LINE__);
        book.entries.erase(memory);
    }
    ::operator delete(memory);
}

void* operator new(std::size_t size, const char* file, int line) {
    return AllocationLedger::allocate(size, file, line);
}

void operator delete(void* memory, const char* /*file*/, int /*line*/) noexcept {
    AllocationLedger::release(memory);
}
