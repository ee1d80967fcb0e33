// An application's own classes, whose names happen to be the library's as well: nothing of the
// library is included here, and nothing here may ever run on its behalf.
#include <atomic>
#include <cstdlib>

std::atomic<int> ownCalls{0};
int useOwnNames();

class Monitor {
public:
    Monitor();
    virtual ~Monitor();
    virtual int getBrightness();

private:
    char m_Picture[4096]; // more than the library's has room for
};
Monitor::Monitor() { ++ownCalls, m_Picture[4095] = 1; }
Monitor::~Monitor() { ++ownCalls; }
int Monitor::getBrightness() { return m_Picture[4095]; }

class GPIO {
public:
    GPIO();
    virtual ~GPIO();
    virtual int init();
};
GPIO::GPIO() { ++ownCalls; }
GPIO::~GPIO() { ++ownCalls; }
int GPIO::init() { return ++ownCalls; }

class Logger {
public:
    static void writeLog(const char* subject, const char* text, const char* file, int line);
};
void Logger::writeLog(const char*, const char*, const char*, int) { ++ownCalls; }

template <typename R> class function {
public:
    explicit function(R (*plain)()) : m_Plain(plain) { ++ownCalls; }
    function(const function& other) : m_Plain(other.m_Plain) { ++ownCalls; }
    virtual ~function() { ++ownCalls; }
    R operator()() const { return m_Plain(); }

private:
    R (*m_Plain)();
};
template class function<int>;

void* operator new(std::size_t size, const char*, int) { return (++ownCalls, std::malloc(size)); }
void operator delete(void* memory, const char*, int) noexcept { std::free(memory); }

// Eleven calls of one's own.
int useOwnNames() {
    struct Picture {
        char bytes[16];
    };
    std::free(new (__FILE__, __LINE__) Picture);
    Monitor monitor;
    GPIO gpio;
    gpio.init();
    Logger::writeLog("", "", "", 0);
    const function<int> brightness(+[] { return 7; });
    const function<int> copy(brightness);
    return monitor.getBrightness() + copy();
}
