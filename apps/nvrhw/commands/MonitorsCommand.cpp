#include "board/documents/schema/MonitorSchema.h"
#include "commands/Abilities.h"
#include "commands/Commands.h"
#include "config/Monitor.h"
#include "print/Console.h"
#include "print/LogBook.h"
#include "print/Table.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <optional>

namespace {

using Schema = MonitorSchema;

/// A whole number among a monitor's parameters.
struct Field {
    const char* option; ///< on the command line
    const FieldSchema& schema;
    const char* title; ///< empty: it continues the column before it ...
    const char* joint; ///< ... after this
    int (MonitorParam::*get)() const;
    void (MonitorParam::*set)(int);

    /// "Per cent, 0 to 100"
    std::string description() const {
        std::string text = schema.meaning;
        text.front() = static_cast<char>(std::toupper(text.front()));
        const Range range = schema.accepted;
        return text + (range.highest == ANY.highest ? ""
                                                    : ", " + std::to_string(range.lowest) + " to " +
                                                          std::to_string(range.highest));
    }
};

constexpr Field FIELDS[] = {
    {"--type", Schema::TYPE, "TYPE", "", &MonitorParam::getType, &MonitorParam::setType},
    {"--resolution", Schema::RESOLUTION_ID, "RESOLUTION", "", &MonitorParam::getResolutionId,
     &MonitorParam::setResolutionId},
    {"--x", Schema::X, "POSITION", "", &MonitorParam::getX, &MonitorParam::setX},
    {"--y", Schema::Y, "", ",", &MonitorParam::getY, &MonitorParam::setY},
    {"--width", Schema::WIDTH, "SIZE", "", &MonitorParam::getWidth, &MonitorParam::setWidth},
    {"--height", Schema::HEIGHT, "", "x", &MonitorParam::getHeight, &MonitorParam::setHeight},
    {"--refresh-rate", Schema::REFRESH_RATE, "HZ", "", &MonitorParam::getRefreshRate,
     &MonitorParam::setRefreshRate},
    {"--brightness", Schema::BRIGHTNESS, "BRIGHTNESS", "", &MonitorParam::getBrightness,
     &MonitorParam::setBrightness},
};
constexpr std::size_t NAME_PLACE = 4; // behind the resolution's id, which it explains

struct Wish {
    const CLI::App* set = nullptr;
    int id = 0;
    bool isNew = false;
    std::optional<bool> isEnabled{};
    std::array<std::optional<int>, std::size(FIELDS)> values{};

    bool isAnyGiven() const {
        return isEnabled.has_value() || isNew ||
               std::any_of(values.begin(), values.end(),
                           [](const auto& value) { return value.has_value(); });
    }
};

using ResolutionNames = std::map<std::pair<int, int>, std::string>; // by type and id

// The names are a help; the parameters can be read and changed without them.
ResolutionNames readResolutionNames() {
    ResolutionNames names;
    try {
        DeviceAbilityCollector abilities;
        readAbilities(abilities);
        for (const MonitorResolution& resolution : abilities.getMonitorResolutionList()) {
            names[{resolution.getInputType(), resolution.getResolutionId()}] =
                resolution.getResolutionName();
        }
    } catch (const CommandError&) {
        names.clear();
    }
    return names;
}

Record describe(const MonitorParam& param, const ResolutionNames& names) {
    Record record{{"id", "ID", param.getMonitorId()},
                  {Schema::ENABLED.name, "ENABLED", param.isEnabled()}};
    for (const Field& field : FIELDS) {
        record.push_back(
            Fact{field.schema.name, field.title, (param.*field.get)()}.after(field.joint));
    }
    const auto found = names.find({param.getType(), param.getResolutionId()});
    record.insert(record.begin() + NAME_PLACE,
                  {"resolution", "NAME", found == names.end() ? "" : found->second});
    return record;
}

std::vector<MonitorParam> read(Monitor& monitors) {
    std::vector<MonitorParam> params;
    if (monitors.getAllMonitorParam(params) == 0) {
        throw CommandError(LogBook::takeCause("the monitor parameters cannot be read"));
    }
    return params;
}

void change(Monitor& monitors, const Wish& wish) {
    if (!wish.isAnyGiven()) {
        throw CLI::ValidationError("MONITOR", "no parameter to change is given");
    }
    read(monitors); // a file that cannot be read is told apart from a missing monitor
    MonitorParam param;
    param.setMonitorId(wish.id);
    const bool isKnown = monitors.getMonitorType(wish.id, param) != 0;
    if (isKnown == wish.isNew) {
        throw CommandError("monitor " + std::to_string(wish.id) +
                           (isKnown ? " is there already; leave --add out to change it"
                                    : " has no parameters; --add adds it"));
    }
    for (std::size_t i = 0; i < wish.values.size(); ++i) {
        if (wish.values[i]) {
            (param.*FIELDS[i].set)(*wish.values[i]);
        }
    }
    param.setEnabled(wish.isEnabled.value_or(param.isEnabled()));
    if (monitors.setMonitorParam(param) != 1) {
        throw CommandError(LogBook::takeCause("the parameters cannot be stored"));
    }
}

int run(const Wish& wish, const Settings& settings) {
    Monitor monitors;
    const bool isChange = wish.set->parsed();
    if (isChange) {
        change(monitors, wish);
    }
    std::vector<Record> records;
    const std::vector<MonitorParam> params = read(monitors);
    const ResolutionNames names = readResolutionNames();
    for (const MonitorParam& param : params) {
        if (!isChange || param.getMonitorId() == wish.id) {
            records.push_back(describe(param, names));
        }
    }
    Table::printList(records, settings.json);
    return 0;
}

} // namespace

void addMonitors(Commands& commands) {
    const auto wish = std::make_shared<Wish>();
    CLI::App& app = commands.add("monitors", "List the monitors' parameters, or change them",
                                 [wish](const Settings& settings) { return run(*wish, settings); });
    CLI::App& set =
        commands.addBelow(app, "set", "Change a monitor's parameters; what is not given stays");
    wish->set = &set;
    set.add_option("MONITOR", wish->id, "The monitor's id")->required()->type_name("");
    for (std::size_t i = 0; i < std::size(FIELDS); ++i) {
        set.add_option(FIELDS[i].option, wish->values[i], FIELDS[i].description())->type_name("N");
    }
    set.add_option("--enabled", wish->isEnabled, "Switched on: true or false")->type_name("BOOL");
    set.add_flag("--add", wish->isNew, "It is a new one");
}
