#include "Edge.h"

#include "Recorder.h"
#include "alarm/IHardwareAlarmListener.h"
#include "alarm/IOAlarmInManager.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace {

class Listener : public IHardwareAlarmListener {
public:
    void update(IMessage* /*message*/) override { m_Arrival.note(); }
    Arrival m_Arrival;
};

} // namespace

void Wire::turn(benchmark::State& state, Arrival& arrival) const {
    std::string present;
    std::ifstream(file) >> present;
    int level = texts[1].compare(0, present.size(), present) == 0 ? 1 : 0;
    const int opened = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    const auto write = [&] {
        level = 1 - level;
        return pwrite(opened, texts[level].data(), texts[level].size(), 0) > 0;
    };
    if (write()) { // what starts with the first is not measured
        arrival.wait();
    }
    for (auto _ : state) {
        const Time begin = std::chrono::steady_clock::now();
        if (!write()) {
            state.SkipWithError("the line cannot be written");
            break;
        }
        const Time end = arrival.wait();
        const Time turned = edge ? std::max(begin, edge()) : begin;
        state.SetIterationTime(std::chrono::duration<double>(end - turned).count());
    }
    close(opened);
}

void Wire::turnRecorder(benchmark::State& state) const {
    const Recorder recorder;
    auto& inputs = Recorder::get<IOAlarmInManager>("IOAlarmInManager");
    inputs.notifyAlarmConsumers(false); // the first judgement of each
    Listener listener;
    const int number = inputs.addListener(&listener);
    turn(state, listener.m_Arrival);
    inputs.removeListener(number);
}
