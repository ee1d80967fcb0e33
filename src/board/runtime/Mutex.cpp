#include "platform/base/Mutex.h"

#include "platform/Diagnostics.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <system_error>
#include <thread>

namespace {

/// What lies in a lock's storage. Zeros are a free lock: the std::mutex is the system's mutex,
/// whose initial value they are.
struct State {
    std::mutex mutex;
    std::atomic<std::thread::id> owner;
    const char* file; // where the owner took it; read by the owner only
    int line;
};

static_assert(sizeof(State) <= XQMutex::STORAGE_SIZE && alignof(State) <= 8, "fits, everywhere");
static_assert(std::is_trivially_destructible_v<State>, "is not ended either");

State& stateIn(unsigned char* storage) {
    return *std::launder(reinterpret_cast<State*>(storage)); // NOLINT: never constructed, see above
}

} // namespace

XQMutex::~XQMutex() {} // out of line, as other frameworks have something to do

int XQMutex::Init() { return 1; }

// The analysis cannot look into the std::mutex behind the capability.
void XQMutex::Lock(const char* file, int line) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    State& state = stateIn(m_Storage);
    if (state.owner.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
        const std::string text = "this thread already holds the lock it asks for, since " +
                                 std::string(state.file) + ":" + std::to_string(state.line);
        Logger::writeLog("XQMutex", text.c_str(), file, line);
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur),
                                text);
    }
    state.mutex.lock();
    state.owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    state.file = file;
    state.line = line;
}

void XQMutex::Unlock(const char* /*file*/, int /*line*/) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    State& state = stateIn(m_Storage);
    state.owner.store(std::thread::id(), std::memory_order_relaxed);
    state.mutex.unlock();
}
