// How an application is tested against a board that breaks: a copy of a board, whose lines are
// files, is its root directory, and the test does to the files what happens to lines in the field.
//
//     simulated_board share/board        status 0 when the application did what it should
#include "alarm/IOAlarmInManager.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <string>

namespace fs = std::filesystem;

/// The application under test: it remembers who is in alarm, and finds out whose line is broken.
class Guard : public IHardwareAlarmListener {
public:
    explicit Guard(const SafePointer<IOAlarmInManager>& inputs) : m_Inputs(inputs) {}

    void update(IMessage* message) override {
        auto* alarm = dynamic_cast<AlarmInformation*>(message);
        const std::lock_guard<std::mutex> lock(m_Mutex);
        if (alarm->getAlarmFlag() != 0) {
            m_Alarms.insert(alarm->getAlarmSourceId());
        } else {
            m_Alarms.erase(alarm->getAlarmSourceId());
        }
        m_Changed.notify_all();
    }

    /// A line that cannot be read sends no message: its id is missing in a batch read.
    bool isBroken(int id) {
        std::vector<IOState> states;
        m_Inputs->getRealLevel(states);
        for (const IOState& state : states) {
            if (state.getId() == id) {
                return false;
            }
        }
        return true;
    }

    bool waitForAlarms(const std::set<std::string>& ids) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        return m_Changed.wait_for(lock, std::chrono::seconds(5), [&] { return m_Alarms == ids; });
    }

private:
    SafePointer<IOAlarmInManager> m_Inputs;
    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    std::set<std::string> m_Alarms;
};

bool isStarted = false;
int failures = 0;

void expect(bool isTrue, const char* what) {
    std::printf("%-6s %s\n", isTrue ? "ok" : "FAILED", what);
    failures += isTrue ? 0 : 1;
}

void play(Guard& guard, const fs::path& bank) {
    const auto write = [&](const char* line, const char* text) {
        std::ofstream(bank / line) << text;
    };
    write("0", "1\n"); // the contact of input 1 (bank 0, bit 0) closes
    expect(guard.waitForAlarms({"1"}), "input 1 is in alarm");

    fs::remove(bank / "3"); // input 4 (bank 0, bit 3) is torn off
    write("4", "?");        // and input 5 tells nonsense
    expect(guard.isBroken(4) && guard.isBroken(5), "inputs 4 and 5 are found broken");
    write("0", "0\n");
    expect(guard.waitForAlarms({}), "the others still work");

    write("3", "1\n"); // repaired, and in alarm
    write("4", "0\n");
    expect(guard.waitForAlarms({"4"}), "input 4 is in alarm as soon as it is back");
    expect(!guard.isBroken(4) && !guard.isBroken(5), "nothing is broken any more");
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: simulated_board BOARD\n");
        return 2;
    }
    std::string copy = (fs::temp_directory_path() / "board-XXXXXX").string();
    if (mkdtemp(copy.data()) == nullptr) {
        std::perror(copy.c_str());
        return 1;
    }
    fs::copy(argv[1], copy, fs::copy_options::recursive);
    GlobalEnv::getInstance()->setRootDirectory(copy);

    auto* factory = HardwareServiceFactory::getInstance();
    // On a board without abilities start() ends the process with status 0: not a test passed.
    std::atexit([] {
        if (!isStarted) {
            std::_Exit(1);
        }
    });
    factory->start();
    isStarted = true;
    auto* holder = factory->getService("IOAlarmInManager");
    SafePointer<IOAlarmInManager> inputs(dynamic_cast<SafePointer<IOAlarmInManager>&>(*holder));
    Guard guard(inputs);
    const int id = inputs->addListener(&guard);
    inputs->notifyAlarmConsumers(false);
    play(guard, fs::path(copy) / "dev/gpiodrv/0");
    inputs->removeListener(id);
    factory->stop();
    fs::remove_all(copy);
    return failures == 0 ? 0 : 1;
}
