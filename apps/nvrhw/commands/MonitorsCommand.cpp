#include "commands/MonitorsCommand.h"

#include "commands/Abilities.h"
#include "config/Monitor.h"
#include "print/CommandError.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <map>

namespace {

using ResolutionNames = std::map<std::pair<int, int>, std::string>; // by type and id

// The names are a help; the parameters can be read and changed without them.
ResolutionNames readResolutionNames() {
    ResolutionNames names;
    try {
        const Abilities abilities;
        for (const MonitorResolution& resolution : abilities.resolutions()) {
            names[{resolution.getInputType(), resolution.getResolutionId()}] =
                resolution.getResolutionName();
        }
    } catch (const CommandError&) {
        names.clear();
    }
    return names;
}

std::string position(const MonitorParam& param) {
    return std::to_string(param.getX()) + "," + std::to_string(param.getY());
}

std::string size(const MonitorParam& param) {
    return std::to_string(param.getWidth()) + "x" + std::to_string(param.getHeight());
}

} // namespace

void MonitorsCommand::setUp(CLI::App& app, Settings& settings) {
    m_Set = app.add_subcommand("set", "Change a monitor's parameters; what is not given stays");
    settings.addTo(*m_Set);
    m_Set->add_option("MONITOR", m_Id, "The monitor's id")->required()->type_name("");
    for (std::size_t i = 0; i < m_Values.size(); ++i) {
        const MonitorField& field = MONITOR_FIELDS[i];
        m_Set->add_option(field.option, m_Values[i], field.description)->type_name("N");
    }
    m_Set->add_option("--enabled", m_IsEnabled, "Switched on: true or false")->type_name("BOOL");
    m_Set->add_flag("--add", m_IsNew, "It is a new one");
}

int MonitorsCommand::run(const Settings& settings) {
    Monitor monitors;
    if (m_Set->parsed()) {
        change(monitors);
    }
    std::vector<MonitorParam> shown;
    for (const MonitorParam& param : read(monitors)) {
        if (!m_Set->parsed() || param.getMonitorId() == m_Id) {
            shown.push_back(param);
        }
    }
    print(shown, settings);
    return 0;
}

std::vector<MonitorParam> MonitorsCommand::read(Monitor& monitors) {
    std::vector<MonitorParam> params;
    if (monitors.getAllMonitorParam(params) == 0) {
        throw CommandError(LogBook::takeCause("the monitor parameters cannot be read"));
    }
    return params;
}

bool MonitorsCommand::isAnyGiven() const {
    bool isAny = m_IsEnabled.has_value() || m_IsNew;
    for (const auto& value : m_Values) {
        isAny = isAny || value.has_value();
    }
    return isAny;
}

void MonitorsCommand::change(Monitor& monitors) const {
    if (!isAnyGiven()) {
        throw CLI::ValidationError("MONITOR", "no parameter to change is given");
    }
    read(monitors); // a file that cannot be read is told apart from a missing monitor
    MonitorParam param;
    param.setMonitorId(m_Id);
    const bool isKnown = monitors.getMonitorType(m_Id, param) != 0;
    if (isKnown == m_IsNew) {
        throw CommandError("monitor " + std::to_string(m_Id) +
                           (isKnown ? " is there already; leave --add out to change it"
                                    : " has no parameters; --add adds it"));
    }
    for (std::size_t i = 0; i < m_Values.size(); ++i) {
        if (m_Values[i]) {
            (param.*MONITOR_FIELDS[i].set)(*m_Values[i]);
        }
    }
    param.setEnabled(m_IsEnabled.value_or(param.isEnabled()));
    if (monitors.setMonitorParam(param) != 1) {
        throw CommandError(LogBook::takeCause("the parameters cannot be stored"));
    }
}

void MonitorsCommand::print(const std::vector<MonitorParam>& params, const Settings& settings) {
    const ResolutionNames names = readResolutionNames();
    Table table({{"ID", Table::RIGHT},
                 {"ENABLED"},
                 {"TYPE", Table::RIGHT},
                 {"RESOLUTION", Table::RIGHT},
                 {"NAME"},
                 {"POSITION", Table::RIGHT},
                 {"SIZE", Table::RIGHT},
                 {"HZ", Table::RIGHT},
                 {"BRIGHTNESS", Table::RIGHT}});
    Json list = Json::array();
    for (const MonitorParam& param : params) {
        const auto found = names.find({param.getType(), param.getResolutionId()});
        const std::string name = found == names.end() ? "" : found->second;
        table.add({param.getMonitorId(), param.isEnabled() ? "yes" : "no", param.getType(),
                   param.getResolutionId(), name, position(param), size(param),
                   param.getRefreshRate(), param.getBrightness()});
        Json object{{"id", param.getMonitorId()}, {"enabled", param.isEnabled()}};
        for (const MonitorField& field : MONITOR_FIELDS) {
            object[field.key] = (param.*field.get)();
        }
        object["resolution"] = name;
        list.push_back(object);
    }
    if (settings.json) {
        Console::printDocument(list);
    } else {
        table.print();
    }
}
