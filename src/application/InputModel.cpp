// What is known of an input is its last record, which the manager's batches and valid levels bring
// up to date: they come with the manager's lock held, one after the other, in the order in which
// they were read. m_Mutex guards the records and the listeners; under it every change goes to the
// mailboxes, and under it a new listener gets the present states. So each listener has, for each
// input, one present state and then all changes after it, however late it comes.
//
// Callbacks are called with no lock at all: the dispatcher, which released() wakes, calls those of
// its own, and released() itself those in place. The locks are taken in the order manager, m_Mutex,
// subscription or dispatcher.
#include "application/InputModel.h"

#include "platform/Insight.h"

#include <limits>
#include <utility>

namespace nvrhw {

namespace {

constexpr char SOURCE[] = "InputModel";
constexpr int NO_LEVEL = -1;

// When the kernel saw the edge that led to a level found now, if it did: one that came since the
// look before. An older one led to a level that was seen then.
Moment edgeTime(const Line& line, std::chrono::steady_clock::time_point lookBefore) {
    using namespace std::chrono;
    std::int64_t edge = 0;
    const auto now = steady_clock::now();
    if (Insight::findLastEdge(line.bank, line.bit, edge)) {
        const steady_clock::time_point seen{nanoseconds(edge)};
        if (seen > lookBefore && seen <= now) {
            return Moment::at(seen);
        }
    }
    return Moment::at(now);
}

} // namespace

InputModel::InputModel(const SafePointer<IOAlarmInManager>& manager, std::vector<LineUse> uses,
                       const std::shared_ptr<Dispatcher>& dispatcher,
                       const std::shared_ptr<LifeGuard>& life)
    : m_Manager(manager), m_Uses(std::move(uses)), m_Dispatcher(dispatcher), m_Life(life),
      m_Entries(m_Uses.size()) {
    for (std::size_t i = 0; i < m_Entries.size(); ++i) {
        m_Entries[i].last.source = i;
    }
}

InputModel::~InputModel() noexcept = default;

// Both lists are in the order of the configuration.
void InputModel::judged(const std::vector<IOState>& states) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    auto state = states.begin();
    for (std::size_t i = 0; i < m_Entries.size(); ++i) {
        const bool isRead = state != states.end() && state->getId() == m_Uses[i].id;
        see(i, isRead ? (state++)->getLevel() : NO_LEVEL);
    }
    m_LastLook = std::chrono::steady_clock::now();
}

void InputModel::validLevelSet(int id, int level) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    for (std::size_t i = 0; i < m_Entries.size(); ++i) {
        if (m_Uses[i].id == id) {
            m_Entries[i].userLevel = level;
            if (m_Entries[i].isKnown) {
                see(i, m_Entries[i].last.level);
            }
        }
    }
}

void InputModel::see(std::size_t index, int level) {
    Entry& entry = m_Entries[index];
    const Line& line = m_Uses[index].line;
    const Input::State state = level == NO_LEVEL                              ? Input::Unreadable
                               : (line.validLevel ^ level) == entry.userLevel ? Input::Alarm
                                                                              : Input::Normal;
    if (entry.isKnown && entry.last.kind == state) {
        entry.last.level = level;
        return;
    }
    entry.last.cause = Cause();
    if (state == Input::Unreadable) {
        entry.last.cause.what = "cannot be read";
        Insight::findLineFault(Insight::READ, line.bank, line.bit, entry.last.cause);
    }
    const bool isEdge = level != NO_LEVEL && level != entry.last.level;
    entry.last.time = isEdge ? edgeTime(line, m_LastLook) : Moment::now();
    entry.last.level = level;
    entry.last.kind = state;
    if (std::exchange(entry.isKnown, true)) {
        tell(entry.last);
    }
}

void InputModel::tell(const InputRecord& record) {
    for (auto entry = m_Listeners.begin(); entry != m_Listeners.end();) {
        const auto told = entry->second.told.lock();
        if (told == nullptr) {
            entry = m_Listeners.erase(entry);
            continue;
        }
        if (entry->second.only.value_or(record.source) == record.source) {
            told->post(record);
        }
        ++entry;
    }
}

void InputModel::released() {
    unsigned id = 0;
    while (const auto told = nextWithMail(id)) {
        if (told->isInPlace()) {
            told->run(std::numeric_limits<std::size_t>::max());
        } else {
            m_Dispatcher->wake(told);
        }
    }
}

// The one after `id`, which becomes its own.
std::shared_ptr<InputModel::Told> InputModel::nextWithMail(unsigned& id) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    for (auto entry = m_Listeners.upper_bound(id); entry != m_Listeners.end(); ++entry) {
        auto told = entry->second.told.lock();
        if (told != nullptr && told->hasMail()) {
            id = entry->first;
            return told;
        }
    }
    return nullptr;
}

std::vector<Input> InputModel::inputs() {
    std::vector<Input> inputs;
    for (std::size_t i = 0; i < m_Uses.size(); ++i) {
        inputs.push_back(at(i));
    }
    return inputs;
}

InputRecord InputModel::last(std::size_t index) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_Entries[index].last;
}

bool InputModel::isInverted(std::size_t index) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_Entries[index].userLevel != 0;
}

Result InputModel::setInverted(std::size_t index, bool isInverted) {
    const LifeGuard::Operation operation(*m_Life);
    if (!operation) {
        return Error(Error::Closed, "the board is closed");
    }
    m_Manager->setValidLevel(m_Uses[index].id, isInverted ? 1 : 0);
    return {};
}

InputChange InputModel::changeOf(const InputRecord& record) {
    return {at(record.source), record.kind,      record.level,  record.cause,
            record.time,       record.isPresent, record.leftOut};
}

void InputModel::close() {
    std::map<unsigned, Listener> listeners;
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        listeners.swap(m_Listeners);
    }
    for (const auto& known : listeners) {
        if (const auto told = known.second.told.lock()) {
            told->end();
        }
    }
    m_Manager.dec_reference();
}

std::shared_ptr<Subscription> InputModel::subscribe(InputCallback callback,
                                                    std::optional<std::size_t> only, bool isInPlace,
                                                    std::size_t capacity) {
    const auto told = std::make_shared<Told>(
        "registration " + std::to_string(++m_Registrations) + " for " +
            (only.has_value() ? "input " + std::to_string(m_Uses[*only].id) : "inputs"),
        isInPlace, Mailbox<InputRecord>(std::max(capacity, m_Uses.size()), m_Uses.size()),
        [self = shared_from_this(), callback = std::move(callback)](const InputRecord& record) {
            callback(self->changeOf(record));
        });
    if (isInPlace) {
        told->claim(); // the present states come in this thread
    }
    {
        const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
        for (const Entry& entry : m_Entries) {
            if (only.value_or(entry.last.source) == entry.last.source) {
                InputRecord present = entry.last;
                present.isPresent = true;
                told->post(present);
            }
        }
        m_Listeners[++m_LastListener] = {told, only};
    }
    if (isInPlace) {
        told->runClaimed();
    } else {
        m_Dispatcher->wake(told);
    }
    return told;
}

} // namespace nvrhw
