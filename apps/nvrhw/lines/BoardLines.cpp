#include "lines/BoardLines.h"

#include "board/gpio/GPIODevice.h"
#include "board/gpio/bank/GPIOFaultBook.h"
#include "platform/Diagnostics.h"
#include "platform/Gpio.h"
#include "platform/HardwareConfigure.h"
#include "platform/Insight.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <algorithm>

namespace {

constexpr char SOURCE[] = "BoardLines";

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

const Line& BoardLines::find(const std::vector<Line>& lines, int id, const std::string& what) {
    const auto found =
        std::find_if(lines.begin(), lines.end(), [id](const Line& line) { return line.id == id; });
    if (found == lines.end()) {
        throw CommandError("there is no alarm " + what + " " + std::to_string(id) +
                           "; `nvrhw --board " + GlobalEnv::getInstance()->getRootDirectory() +
                           " " + what + "s` lists them");
    }
    return *found;
}
