// A bank is present, as long as m_Lines is set, or gone, for good: when the entry comes back, the
// table opens another bank. Whoever runs into the loss moves it, through lose(): an operation whose
// ioctl finds the chip taken away, drain() when the sentinel was disturbed and the entry leads
// elsewhere now, and the table when it puts another bank in this one's place.
//
// m_Mutex is held for the whole of every operation, system calls included, so all users of one chip
// take turns; a chip that hangs holds up its own bank only. The watches have no state here but
// their Watcher. The kernel reports a change once, to whoever reads it first: so every operation on
// the lines ends in settle(), which marks the change for each watch of the line and wakes it, under
// the same lock.
//
// What must never be seen: a change that one watch has taken and another misses; a watch that
// sleeps on after the loss; a bank that is gone and still has its chip open, as the chip could not
// come back under its number; an output that loses its level because udev made the entry anew.

#include "board/gpio/kernel/KernelBank.h"

#include "board/gpio/kernel/KernelChip.h"
#include "board/gpio/kernel/KernelWatch.h"
#include "platform/Cause.h"

#include <algorithm>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <utility>

namespace {

constexpr char SOURCE[] = "KernelBank";

// The places of a watch's descriptors, as a mask.
constexpr unsigned REPORTS = 1;
constexpr unsigned ENTRY = 2;
constexpr unsigned EVENT = 4;

Cause gone(const std::string& path) { return {"", path, 0, ENODEV}; }

} // namespace

std::shared_ptr<GPIOBank> KernelBank::open(const std::string& device, int group,
                                           const std::shared_ptr<GPIOFaultBook>& book,
                                           Cause& cause) {
    std::shared_ptr<KernelBank> bank(new KernelBank(device, group, book));
    return bank->begin(cause) ? bank : nullptr;
}

KernelBank::KernelBank(const std::string& device, int group,
                       const std::shared_ptr<GPIOFaultBook>& book)
    : m_Device(device), m_Group(group), m_Path(device + "/" + std::to_string(group)), m_Book(book) {
}

bool KernelBank::begin(Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (!guardEntry(cause)) {
        return false;
    }
    auto chip = KernelChip::open(m_Path, cause);
    if (chip == nullptr) {
        return false;
    }
    m_Lines = std::make_unique<KernelLines>(std::move(chip), m_Group, m_Reports);
    return true;
}

bool KernelBank::guardEntry(Cause& cause) {
    m_Entry.remove(m_Sentinel.getDescriptor());
    m_Sentinel = EntrySentinel();
    return m_Sentinel.begin(m_Device, std::to_string(m_Group), cause) &&
           m_Entry.add(m_Sentinel.getDescriptor(), 0, cause);
}

bool KernelBank::isCurrent(const struct stat& entry) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_Lines != nullptr && isMine(entry);
}

bool KernelBank::isWatched() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    return m_Lines != nullptr && !m_Watchers.empty();
}

bool KernelBank::isMine(const struct stat& entry) {
    return S_ISCHR(entry.st_mode) && entry.st_rdev == m_Lines->getChipNumber();
}

void KernelBank::retire() {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    lose();
}

void KernelBank::read(const std::vector<GPIOReading*>& readings) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Lines == nullptr) {
        for (GPIOReading* reading : readings) {
            reading->cause = gone(m_Path);
        }
        return;
    }
    m_Lines->read(readings);
    settle();
}

bool KernelBank::drive(int bit, int level, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Lines == nullptr) {
        cause = gone(m_Path);
        return false;
    }
    const bool driven = m_Lines->drive(bit, level, cause);
    settle();
    return driven;
}

std::unique_ptr<GPIOBankWatch> KernelBank::watch(Cause& cause) {
    return KernelWatch::begin(shared_from_this(), cause);
}

void KernelBank::join(const KernelWatch& watch, int event) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Watchers[&watch].event = event;
}

void KernelBank::leave(const KernelWatch& watch) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const std::set<int> bits = m_Watchers[&watch].bits;
    m_Watchers.erase(&watch);
    for (const int bit : bits) {
        unwatch(bit);
    }
}

bool KernelBank::cover(const KernelWatch& watch, int bit, Cause& cause) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    if (m_Lines != nullptr) {
        m_Watchers[&watch].bits.insert(bit);
        m_Lines->watch(bit);
        note(m_Lines->hold({bit}));
        settle();
    }
    if (m_Lines == nullptr) {
        cause = gone(m_Path);
        return false;
    }
    return true;
}

void KernelBank::uncover(const KernelWatch& watch, int bit) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    m_Watchers[&watch].bits.erase(bit);
    unwatch(bit);
}

void KernelBank::unwatch(int bit) {
    const bool watched =
        std::any_of(m_Watchers.begin(), m_Watchers.end(),
                    [bit](const auto& known) { return known.second.bits.count(bit) != 0; });
    if (!watched && m_Lines != nullptr) {
        m_Lines->unwatch(bit);
    }
}

GPIOBankWatch::Finding KernelBank::drain(const KernelWatch& watch, unsigned readable) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    Watcher& watcher = m_Watchers[&watch];
    const bool isTouched = (readable & ENTRY) != 0 && m_Sentinel.isDisturbed();
    if (m_Lines == nullptr || (isTouched && !isStillThere())) {
        lose();
        return GPIOBankWatch::LOST;
    }
    if ((readable & REPORTS) != 0) {
        m_Lines->collect();
    }
    note(m_Lines->hold(watcher.bits));
    settle(&watcher);
    eventfd_t ignored = 0;
    if ((readable & EVENT) != 0) {
        eventfd_read(watcher.event, &ignored);
    }
    if (m_Lines == nullptr) {
        return GPIOBankWatch::LOST;
    }
    const bool changed = std::exchange(watcher.isChanged, false);
    return changed || m_Lines->isAnyUnsure(watcher.bits) ? GPIOBankWatch::CHANGED
                                                         : GPIOBankWatch::NOTHING;
}

// An entry that is made anew for the same chip, as udev does, must not cost the outputs' levels.
bool KernelBank::isStillThere() {
    Cause ignored;
    struct stat entry {};
    return guardEntry(ignored) && stat(m_Path.c_str(), &entry) == 0 && isMine(entry);
}

bool KernelBank::isComplete(const KernelWatch& watch) {
    const XQMutexManager guard(m_Mutex, SOURCE, __LINE__);
    const std::set<int>& bits = m_Watchers[&watch].bits;
    return m_Lines == nullptr || (!m_Lines->isAnyRefused(bits) && !m_Lines->isAnyUnsure(bits));
}

// A line that cannot be watched cannot be read either, for the same cause: one record tells both.
void KernelBank::note(const KernelLines::Outcome& outcome) {
    for (const auto& [bit, cause] : outcome) {
        m_Book->note(GPIOFaultBook::READ, m_Group, bit, cause);
    }
}

// After every operation on the lines: passes on what it has brought up. One watcher may be awake.
void KernelBank::settle(const Watcher* awake) {
    if (m_Lines->isGone()) {
        lose();
        return;
    }
    for (auto& [watch, watcher] : m_Watchers) {
        if (!watcher.isChanged && m_Lines->isAnyChanged(watcher.bits)) {
            watcher.isChanged = true;
            if (&watcher != awake) {
                eventfd_write(watcher.event, 1);
            }
        }
    }
    m_Lines->forgetChanges();
}

// Lets go of the chip at once, so that it can come back under its old number.
void KernelBank::lose() {
    m_Lines.reset();
    for (const auto& known : m_Watchers) {
        eventfd_write(known.second.event, 1);
    }
}
