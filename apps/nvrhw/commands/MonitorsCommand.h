#pragma once

#include "commands/Command.h"
#include "commands/MonitorField.h"

#include <array>
#include <iterator>
#include <optional>
#include <vector>

class Monitor;

/// Lists and changes the parameters of the monitors.
class MonitorsCommand : public Command {
public:
    MonitorsCommand() : Command("monitors", "List the monitors' parameters, or change them") {}

    int run(const Settings& settings) override;

protected:
    void setUp(CLI::App& app, Settings& settings) override;

private:
    void change(Monitor& monitors) const;
    bool isAnyGiven() const;
    static std::vector<MonitorParam> read(Monitor& monitors);
    static void print(const std::vector<MonitorParam>& params, const Settings& settings);

    CLI::App* m_Set = nullptr;
    int m_Id = 0;
    bool m_IsNew = false;
    std::optional<bool> m_IsEnabled;
    std::array<std::optional<int>, std::size(MONITOR_FIELDS)> m_Values;
};
