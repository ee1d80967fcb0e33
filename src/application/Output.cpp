#include "application/Output.h"

#include "application/ChangeText.h"
#include "application/OutputModel.h"

#include <ostream>
#include <utility>

namespace nvrhw {

namespace {

constexpr Output::Time NO_END{0};

void expectTime(Output::Time time, Output::Time least, const char* what) {
    if (time < least || time > Output::LONGEST_TIME) {
        throw Error(Error::BadArgument, std::string(what) + " of " + std::to_string(time.count()) +
                                            " ms: it is " + std::to_string(least.count()) + " to " +
                                            std::to_string(Output::LONGEST_TIME.count()) + " ms");
    }
}

} // namespace

Output::Output(std::shared_ptr<OutputModel> model, std::size_t index)
    : id(model->uses()[index].id), name(model->uses()[index].name), line(model->uses()[index].line),
      m_Model(std::move(model)), m_Index(index) {}

Result Output::hold() const { return m_Model->operate(m_Index, OutputModel::HOLD, NO_END, NO_END); }

Result Output::hold(Time time) const {
    expectTime(time, Time(1), "a time");
    return m_Model->operate(m_Index, OutputModel::HOLD, NO_END, time);
}

Result Output::flash(Time period) const {
    expectTime(period, SHORTEST_PERIOD, "a period");
    return m_Model->operate(m_Index, OutputModel::FLASH, period, NO_END);
}

Result Output::flash(Time period, Time time) const {
    expectTime(period, SHORTEST_PERIOD, "a period");
    expectTime(time, Time(1), "a time");
    return m_Model->operate(m_Index, OutputModel::FLASH, period, time);
}

Result Output::pulse() const {
    return m_Model->operate(m_Index, OutputModel::PULSE, NO_END, NO_END);
}

Result Output::rest() const { return m_Model->operate(m_Index, OutputModel::REST, NO_END, NO_END); }

OutputState Output::state() const { return m_Model->state(m_Index); }

bool Output::isInverted() const { return m_Model->isInverted(m_Index); }

void Output::setInverted(bool isInverted) const { m_Model->setInverted(m_Index, isInverted); }

const char* toText(Output::Operation operation) {
    switch (operation) {
    case Output::Hold:
        return "hold";
    case Output::Flash:
        return "flash";
    case Output::Pulse:
        return "pulse";
    default:
        return "none";
    }
}

const char* toText(OutputChange::Kind kind) {
    static constexpr const char* TEXTS[] = {"began", "ended", "replaced", "failed", "driven"};
    return TEXTS[kind];
}

std::ostream& operator<<(std::ostream& stream, const OutputChange& change) {
    beginText(stream, change, "output", change.output);
    if (change.operation != Output::None) {
        stream << ' ' << toText(change.operation);
    }
    stream << ' ' << toText(change.kind);
    if (change.kind == OutputChange::Driven) {
        stream << " to " << change.level;
    }
    return endText(stream, change);
}

} // namespace nvrhw
