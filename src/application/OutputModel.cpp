// An output does nothing, or an operation runs on it, and beside that it may pulse. The operator's
// hook moves it from one to the other, whoever has asked the operator, and mostly with its record
// lock held; m_Mutex guards what is known. The locks are taken in the order record lock, m_Mutex,
// subscription or dispatcher: nothing here calls the operator with m_Mutex held.
#include "application/OutputModel.h"

#include "alarm/AlarmOutMode.h"
#include "application/ChangeText.h"
#include "platform/Insight.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "OutputModel";
constexpr int NO_LEVEL = -1;
constexpr double MICROSECONDS = 1000.0; // in a millisecond

/// What an operation that this thread asks for comes to; the hook writes it down.
class Asking {
public:
    explicit Asking(const Line& line) : m_Line(line), m_Outer(std::exchange(s_Innermost, this)) {}
    ~Asking() { s_Innermost = m_Outer; }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

    Result result() const { return m_Failure.has_value() ? Result(*m_Failure) : Result(); }

    static void fail(const Line& line, const Error& error) {
        if (s_Innermost != nullptr && s_Innermost->m_Line.bank == line.bank &&
            s_Innermost->m_Line.bit == line.bit) {
            s_Innermost->m_Failure.emplace(error);
        }
    }

private:
    static thread_local Asking* s_Innermost;

    const Line m_Line;
    Asking* const m_Outer;
    std::optional<Error> m_Failure{};
};
thread_local Asking* Asking::s_Innermost = nullptr;

Cause driveFault(const Line& line) {
    Cause cause{"cannot be driven"};
    Insight::findLineFault(Insight::DRIVE, line.bank, line.bit, cause);
    return cause;
}

} // namespace

OutputModel::OutputModel(const SafePointer<GPIOOperator>& gpioOperator, std::vector<LineUse> uses,
                         const std::shared_ptr<Dispatcher>& dispatcher,
                         const std::shared_ptr<LifeGuard>& life)
    : m_Operator(gpioOperator), m_Uses(std::move(uses)), m_Dispatcher(dispatcher), m_Life(life),
      m_Entries(m_Uses.size()) {}

OutputModel::~OutputModel() noexcept = default;

std::optional<std::size_t> OutputModel::find(int group, int bit) const {
    for (std::size_t i = 0; i < m_Uses.size(); ++i) {
        if (m_Uses[i].line.bank == group && m_Uses[i].line.bit == bit) {
            return i;
        }
    }
    return std::nullopt;
}

int OutputModel::activeLevel(std::size_t index) const {
    return m_Uses[index].line.validLevel ^ (m_Entries[index].isInverted ? 1 : 0);
}

void OutputModel::driven(int group, int bit, int level, bool isDone) {
    const auto index = find(group, bit);
    if (!index.has_value()) {
        return;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    Entry& entry = m_Entries[*index];
    if (!isDone) {
        fail(*index, Error::NotDriven, driveFault(m_Uses[*index].line), level);
        return;
    }
    const bool wasFailing = entry.failure.has_value();
    entry.failure.reset();
    ++entry.drives;
    if (std::exchange(entry.driven, level) != level || wasFailing) {
        tell(*index, OutputChange::Driven, entry.running, level);
    }
}

void OutputModel::begun(const GPIOOperation& operation) {
    const auto index = find(operation.group, operation.bit);
    if (!index.has_value()) {
        return;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    Entry& entry = m_Entries[*index];
    const bool isForGood = operation.mode == AlarmOutMode::Steady && operation.timeOut == 0;
    if (operation.mode == AlarmOutMode::Pulse) {
        if (entry.running == Output::Hold && entry.timeOut == 0) { // it will not come back
            tell(*index, OutputChange::Replaced, std::exchange(entry.running, Output::None));
        }
        entry.isPulsing = true;
        tell(*index, OutputChange::Began, Output::Pulse);
        return;
    }
    const Output::Operation next = operation.mode == AlarmOutMode::Flash ? Output::Flash
                                   : isForGood && operation.level != activeLevel(*index)
                                       ? Output::None
                                       : Output::Hold;
    const Output::Operation before = std::exchange(entry.running, next);
    if (before != Output::None) {
        tell(*index, next == Output::None ? OutputChange::Ended : OutputChange::Replaced, before);
    }
    entry.timeOut = operation.timeOut;
    entry.start = GPIOOperateRecord::now();
    if (next != Output::None) {
        tell(*index, OutputChange::Began, next);
    }
}

void OutputModel::ended(int group, int bit, int mode) {
    const auto index = find(group, bit);
    if (!index.has_value()) {
        return;
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    Entry& entry = m_Entries[*index];
    if (mode == AlarmOutMode::Pulse) {
        entry.isPulsing = false;
        tell(*index, OutputChange::Ended, Output::Pulse);
    } else if (entry.running != Output::None) {
        tell(*index, OutputChange::Ended, std::exchange(entry.running, Output::None));
    }
}

void OutputModel::refused(const GPIOOperation& operation) {
    const auto index = find(operation.group, operation.bit);
    if (index.has_value()) {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        fail(*index, Error::NoWorker, {"its end cannot be carried out: there is no thread for it"},
             NO_LEVEL);
        m_Entries[*index].running = Output::None;
    }
}

void OutputModel::fail(std::size_t index, Error::Code code, const Cause& cause, int level) {
    Entry& entry = m_Entries[index];
    const bool isNew = !entry.failure.has_value() || entry.failure->code() != code;
    const Error error(code, "output " + idAndName(m_Uses[index]), {cause});
    entry.failure.emplace(error);
    Asking::fail(m_Uses[index].line, error);
    if (isNew) {
        tell(index, OutputChange::Failed, entry.running, level, cause);
    }
}

void OutputModel::tell(std::size_t index, OutputChange::Kind kind, Output::Operation operation,
                       int level, const Cause& cause) {
    if (m_Listeners.empty()) {
        return;
    }
    const OutputRecord record{index, kind, operation, level, cause, Moment::now(), 0};
    for (auto entry = m_Listeners.begin(); entry != m_Listeners.end();) {
        const auto told = entry->told.lock();
        if (told == nullptr) {
            entry = m_Listeners.erase(entry);
            continue;
        }
        if (kind != OutputChange::Driven || entry->withDrives) {
            told->post(record);
            m_Dispatcher->wake(told);
        }
        ++entry;
    }
}

std::vector<Output> OutputModel::outputs() {
    std::vector<Output> outputs;
    for (std::size_t i = 0; i < m_Uses.size(); ++i) {
        outputs.push_back(at(i));
    }
    return outputs;
}

Result OutputModel::operate(std::size_t index, Wish wish, Output::Time period, Output::Time time) {
    const LifeGuard::Operation operation(*m_Life);
    if (!operation) {
        return Error(Error::Closed, "the board is closed");
    }
    return carryOut(index, wish, period, time);
}

Result OutputModel::carryOut(std::size_t index, Wish wish, Output::Time period, Output::Time time) {
    const Line& line = m_Uses[index].line;
    int active = 0;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        active = activeLevel(index);
        m_Entries[index].isOwn = true;
    }
    const int rest = 1 - active;
    const int mode = wish == FLASH   ? AlarmOutMode::Flash
                     : wish == PULSE ? AlarmOutMode::Pulse
                                     : AlarmOutMode::Steady;
    const float changes =
        wish == FLASH ? 2000.0F / static_cast<float>(period.count()) : 0.0F; // in a second
    const Asking asking(line);
    m_Operator->set(line.bank, line.bit, mode, wish == REST ? rest : active, rest, changes,
                    static_cast<int>(time.count()));
    return asking.result();
}

// What was last driven and what the line is are had at two moments: they count together only when
// nothing was driven between two looks.
OutputState OutputModel::state(std::size_t index) {
    const LifeGuard::Operation operation(*m_Life);
    if (!operation) {
        OutputState closed;
        closed.cause.what = "the board is closed";
        return closed;
    }
    unsigned before = 0;
    OutputState state = look(index, before);
    for (unsigned drives = before + 1; !state.agrees && drives != before;) {
        drives = before;
        state = look(index, before);
    }
    return state;
}

OutputState OutputModel::look(std::size_t index, unsigned& drives) {
    const Line& line = m_Uses[index].line;
    OutputState state;
    const bool isRead = m_Operator->get(line.bank, line.bit, state.level) != 0;
    if (!isRead) {
        state.level = NO_LEVEL;
        state.cause.what = "cannot be read";
        Insight::findLineFault(Insight::READ, line.bank, line.bit, state.cause);
    }
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const Entry& entry = m_Entries[index];
    drives = entry.drives;
    state.isActive = (isRead ? state.level : entry.driven) == activeLevel(index);
    state.agrees = !isRead || entry.driven == NO_LEVEL || entry.driven == state.level;
    state.operation = entry.isPulsing ? Output::Pulse : entry.running;
    if (entry.running != Output::None && entry.timeOut != 0) {
        const double past = (GPIOOperateRecord::now() - entry.start) / MICROSECONDS;
        state.remaining = Output::Time(std::llround(std::max(0.0, entry.timeOut - past)));
    }
    state.failure = entry.failure;
    return state;
}

bool OutputModel::isInverted(std::size_t index) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_Entries[index].isInverted;
}

void OutputModel::setInverted(std::size_t index, bool isInverted) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Entries[index].isInverted = isInverted;
}

void OutputModel::putToRest(bool isAll) {
    for (std::size_t i = 0; i < m_Uses.size(); ++i) {
        bool isWanted = false;
        {
            const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
            const Entry& entry = m_Entries[i];
            const bool isUnfinished = entry.running == Output::Flash ||
                                      (entry.running == Output::Hold && entry.timeOut != 0);
            isWanted = isUnfinished || (isAll && entry.isOwn);
        }
        if (isWanted) {
            carryOut(i, REST, Output::Time(0), Output::Time(0));
        }
    }
}

void OutputModel::close() {
    std::vector<Listener> listeners;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        listeners.swap(m_Listeners);
    }
    for (const Listener& listener : listeners) {
        if (const auto told = listener.told.lock()) {
            told->end();
        }
    }
    m_Operator.dec_reference();
}

OutputChange OutputModel::changeOf(const OutputRecord& record) {
    return {at(record.source), record.kind, record.operation, record.level,
            record.cause,      record.time, record.leftOut};
}

std::shared_ptr<Subscription> OutputModel::subscribe(OutputCallback callback, bool withDrives,
                                                     std::size_t capacity) {
    const auto told = std::make_shared<Told>(
        "registration " + std::to_string(++m_Registrations) + " for outputs", false,
        Mailbox<OutputRecord>(capacity, m_Uses.size()),
        [self = shared_from_this(), callback = std::move(callback)](const OutputRecord& record) {
            callback(self->changeOf(record));
        });
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Listeners.push_back({told, withDrives});
    return told;
}

} // namespace nvrhw
