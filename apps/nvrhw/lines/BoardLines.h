#pragma once

#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"
#include "lines/LineState.h"

#include <string>
#include <vector>

/// The lines of the board: their configuration, and the operator that reads and drives them. It
/// needs nothing else of the board, so that lines can be tried before the rest is right.
class BoardLines {
public:
    /// Reads the hardware configuration. Raises CommandError when it cannot be read.
    BoardLines();

    /// The same with a driver of one's own.
    explicit BoardLines(const SafePointer<IGPIO>& driver);

    /// The driver of the library, on the board's device.
    static SafePointer<IGPIO> makeDriver();

    const std::vector<Line>& inputs() const { return m_Inputs; }
    const std::vector<Line>& outputs() const { return m_Outputs; }

    /// The line with this id, or else the one with this name. Raises CommandError, which lists
    /// those there are, when none is meant or several are.
    const Line& input(const std::string& which) const { return find(m_Inputs, which, "input"); }
    const Line& output(const std::string& which) const { return find(m_Outputs, which, "output"); }

    /// Reads all these lines at once: the level of each, and why it has none.
    void read(const std::vector<LineState*>& states) const;

    /// Gives the line of an input on a simulated bank the other level, as another process would,
    /// and returns that. Raises CommandError when it cannot be done.
    int flip(const Line& input) const;

    /// A manager of the library for these lines: of the alarm inputs or of the outputs.
    template <typename Manager> SafePointer<Manager> makeManager() const {
        const SafePointer<Manager> manager(new ("BoardLines", __LINE__) Manager);
        SafePointer<MachineConfigurationDetail> detail(m_Detail);
        manager->setGPIOOperator(m_Operator);
        manager->setMachineConfigurationDetail(detail);
        manager->init();
        return manager;
    }

    const SafePointer<MachineConfigurationDetail>& detail() const { return m_Detail; }
    const SafePointer<GPIOOperator>& gpioOperator() const { return m_Operator; }

private:
    static const Line& find(const std::vector<Line>& lines, const std::string& which,
                            const std::string& what);

    SafePointer<MachineConfigurationDetail> m_Detail;
    SafePointer<GPIOOperator> m_Operator;
    std::vector<Line> m_Inputs;
    std::vector<Line> m_Outputs;
};
