#include "application/Input.h"

#include "application/ChangeText.h"
#include "application/InputModel.h"
#include "platform/Insight.h"

#include <ostream>
#include <utility>

namespace nvrhw {

Input::Input(std::shared_ptr<InputModel> model, std::size_t index)
    : id(model->uses()[index].id), name(model->uses()[index].name), line(model->uses()[index].line),
      m_Model(std::move(model)), m_Index(index) {}

Input::Status Input::status() const {
    const InputRecord last = m_Model->last(m_Index);
    Status status{last.kind, last.level, last.time, last.cause};
    if (last.kind == Unreadable) { // the cause may have become another one since
        Insight::findLineFault(Insight::READ, line.bank, line.bit, status.cause);
    }
    return status;
}

Input::State Input::state() const { return status().state; }

int Input::level() const { return status().level; }

Moment Input::since() const { return status().since; }

Cause Input::cause() const { return status().cause; }

bool Input::isInverted() const { return m_Model->isInverted(m_Index); }

Result Input::setInverted(bool isInverted) const {
    return m_Model->setInverted(m_Index, isInverted);
}

const char* toText(Input::State state) {
    return state == Input::Alarm ? "alarm" : state == Input::Normal ? "normal" : "unreadable";
}

std::ostream& operator<<(std::ostream& stream, const InputChange& change) {
    beginText(stream, change, "input", change.input);
    stream << ' ' << toText(change.state);
    return endText(stream, change);
}

} // namespace nvrhw
