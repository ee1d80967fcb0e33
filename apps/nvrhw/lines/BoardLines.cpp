#include "lines/BoardLines.h"

#include "board/gpio/GPIODevice.h"
#include "board/gpio/bank/GPIOFaultBook.h"
#include "platform/Diagnostics.h"
#include "platform/Gpio.h"
#include "platform/HardwareConfigure.h"
#include "platform/Insight.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>

namespace {

constexpr char SOURCE[] = "BoardLines";
constexpr std::size_t MOST_LISTED = 32; // lines in a message

std::vector<Line> toLines(const SafePointer<HardwareConfigItemList>& list) {
    std::vector<Line> lines;
    for (const auto& item : list->getHardwareConfigItemList()) {
        const auto signal = dynamic_pointer_cast<GPIOSignalConfigItem>(item);
        lines.push_back({signal->getId(), signal->getSettings().name, signal->getGroup(),
                         signal->getBitPosition(), signal->getValidLevel()});
    }
    return lines;
}

} // namespace

BoardLines::BoardLines() : BoardLines(makeDriver()) {}

BoardLines::BoardLines(const SafePointer<IGPIO>& driver)
    : m_Detail(new (SOURCE, __LINE__) MachineConfigurationDetail),
      m_Operator(new (SOURCE, __LINE__) GPIOOperator) {
    if (m_Detail->initHardwareConfig() == 0) {
        throw CommandError::ofBoard(
            LogBook::takeCause("the hardware configuration cannot be read"));
    }
    m_Inputs = toLines(m_Detail->getAlarmInConfigItemList());
    m_Outputs = toLines(m_Detail->getAlarmOutConfigItemList());
    m_Operator->setGPIO(driver);
}

SafePointer<IGPIO> BoardLines::makeDriver() {
    auto* driver = new (SOURCE, __LINE__) GPIO;
    const SafePointer<IGPIO> owner(driver);
    driver->m_DeviceName = GPIODevice::PATH;
    if (driver->init() == 0) {
        throw CommandError(LogBook::takeCause("no GPIO device") +
                           "; --board DIR names another board");
    }
    return owner;
}

void BoardLines::read(const std::vector<LineState*>& states) const {
    std::vector<IOInfo> requests;
    for (LineState* state : states) {
        IOInfo request;
        request.setId(static_cast<int>(requests.size())); // several lines may have the same id
        request.setGroupId(state->line.group);
        request.setBitPosion(state->line.bit);
        requests.push_back(request);
        state->level = -1;
    }
    std::vector<IOState> found;
    SafePointer<GPIOOperator>(m_Operator)->get(requests, found);
    for (const IOState& each : found) {
        states[static_cast<std::size_t>(each.getId())]->level = each.getLevel();
    }
    for (LineState* state : states) {
        Cause cause{"cannot be read"};
        if (!state->isReadable()) {
            Insight::findLineFault(Insight::READ, state->line.group, state->line.bit, cause);
        }
        state->cause = state->isReadable() ? "" : cause.text();
    }
    LogBook::forget(GPIOFaultBook::SUBJECT);
}

int BoardLines::flip(const Line& input) const {
    const std::string name = "input " + std::to_string(input.id);
    const GPIODevice device(GlobalEnv::getInstance()->resolve(GPIODevice::PATH));
    if (device.look(input.group).kind == GPIODevice::KERNEL) {
        throw CommandError(name + " is a line of a real GPIO chip: close or open its contact; only "
                                  "simulated ones can be flipped");
    }
    LineState now;
    now.line = input;
    read({&now});
    if (!now.isReadable()) {
        throw CommandError(name + " cannot be flipped while it is unreadable");
    }
    const int level = 1 - now.level;
    const std::string path = device.pathOf(input.group) + "/" + std::to_string(input.bit);
    std::fstream file(path, std::ios::in | std::ios::out); // never empty in between
    if (!(file << level << std::flush)) {
        throw CommandError(path + " cannot be written: " + std::strerror(errno));
    }
    return level;
}

// An id goes before a name that looks like one, and of several lines with one id the first is
// meant.
const Line& BoardLines::find(const std::vector<Line>& lines, const std::string& which,
                             const std::string& what) {
    int id = 0;
    const char* end = which.data() + which.size();
    const auto [rest, error] = std::from_chars(which.data(), end, id);
    const bool isId = error == std::errc() && rest == end;
    std::vector<const Line*> named;
    std::string list;
    std::size_t count = 0;
    for (const Line& line : lines) {
        if (isId && line.id == id) {
            return line;
        }
        if (!which.empty() && line.name == which) {
            named.push_back(&line);
        }
        if (++count <= MOST_LISTED) {
            list += (list.empty() ? "" : ", ") + std::to_string(line.id) +
                    (line.name.empty() ? "" : " (" + line.name + ")");
        }
    }
    list += count > MOST_LISTED ? ", ..." : "";
    if (named.size() != 1) {
        throw CommandError((named.empty() ? "there is no alarm " + what + " " + which
                                          : "several " + what + "s are named " + which) +
                           "; " + (list.empty() ? "the board has none" : "there are " + list));
    }
    return *named.front();
}
