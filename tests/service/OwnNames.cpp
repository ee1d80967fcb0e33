// An application's own classes, whose names happen to be the library's as well: nothing of the
// library is included here, and nothing here may ever run on its behalf.
#include <atomic>
#include <cstdlib>

#define OWN [[gnu::used, gnu::noinline]] // there for others to call by mistake

std::atomic<int> ownCalls{0};
int useOwnNames();

struct Monitor {
    OWN Monitor() { ++ownCalls, picture[4095] = 1; }
    OWN virtual ~Monitor() { ++ownCalls; }
    char picture[4096]; // more than the library's has room for
};
struct GPIO {
    OWN GPIO() { ++ownCalls; }
    OWN virtual ~GPIO() { ++ownCalls; }
    OWN virtual int init() { return ++ownCalls; }
};
struct Logger {
    OWN static void writeLog(const char*, const char*, const char*, int) { ++ownCalls; }
};
template <typename R> struct function {
    explicit function(R (*plain)()) : m_Plain(plain) { ++ownCalls; }
    function(const function& other) : m_Plain(other.m_Plain) { ++ownCalls; }
    virtual ~function() { ++ownCalls; }
    R operator()() const { return m_Plain(); }
    R (*m_Plain)();
};
template struct function<int>;
void* operator new(std::size_t size, const char*, int) { return (++ownCalls, std::malloc(size)); }
void operator delete(void* memory, const char*, int) noexcept { std::free(memory); }

// Eleven calls of one's own.
int useOwnNames() {
    std::free(new (__FILE__, __LINE__) char);
    const Monitor monitor;
    GPIO().init();
    Logger::writeLog("", "", "", 0);
    const function<int> brightness(+[] { return 7; });
    const function<int> copy(brightness);
    return monitor.picture[4095] + copy();
}
