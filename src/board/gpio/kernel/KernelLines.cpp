// To this process a line is free, refused (in m_Refused: asked for in vain, asked for again by each
// hold()), or held in a request (in m_Held) in one of the roles: as is, input, output. hold()
// makes a free or refused line as is, or an input when it is watched, and an input of what was as
// is; drive() makes an output of any; an output stays one. An input is silent (in m_Silent) when
// the kernel cannot report its changes.
//
// A request holds many lines, so one of them can only leave, or a new one join, when remake()
// closes the request and asks anew. What changes in between nobody reports, so its inputs count as
// changed.
//
// No lock: the bank's covers every call. What must never be seen: a request with an output closed,
// which may drop its level; a line in two requests, which the kernel refuses; a watched line whose
// change was not reported and that is not in m_Changed; a line that fails because another one does.

#include "board/gpio/kernel/KernelLines.h"

#include "board/gpio/bank/GPIOEdgeTable.h"
#include "board/gpio/bank/GPIOFaultBook.h"
#include "board/gpio/bank/GPIOLineSettingsTable.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Failures that say that the kernel cannot report the changes of a line: it has no interrupt, or
// none for both edges.
bool isForWantOfReports(int error) { return error == ENXIO || error == EINVAL; }

} // namespace

KernelLines::KernelLines(std::unique_ptr<KernelChip> chip, int group, const Epoll& reports)
    : m_Chip(std::move(chip)), m_Group(group), m_Reports(reports) {}

KernelLines::~KernelLines() {
    for (const KernelRequest* request : m_Reporting) {
        m_Reports.remove(request->getDescriptor());
    }
    GPIOEdgeTable::forget(m_Group);
}

KernelLines::Outcome KernelLines::hold(const std::set<int>& bits) {
    Outcome outcome;
    std::vector<KernelLine> wanted;
    for (const int bit : bits) {
        Cause cause;
        if (isHeld(bit)) {
            continue;
        }
        if (m_Chip->has(bit, cause)) {
            release(bit);
            wanted.push_back(describe(bit));
        } else {
            m_Refused[bit] = cause;
        }
        outcome[bit] = cause;
    }
    take(wanted);
    for (const KernelLine& line : wanted) {
        const auto refused = m_Refused.find(line.bit);
        outcome[line.bit] = refused != m_Refused.end() ? refused->second : Cause();
        m_IsScattered = m_IsScattered || refused == m_Refused.end();
    }
    return outcome;
}

void KernelLines::read(const std::vector<GPIOReading*>& readings) {
    std::set<int> missing;
    for (const GPIOReading* reading : readings) {
        if (!isHeld(reading->bit)) {
            missing.insert(reading->bit);
        }
    }
    hold(missing);
    pack();
    auto held = m_Held.end();
    for (const GPIOReading* reading : readings) {
        held = find(reading->bit, held);
        if (held != m_Held.end()) {
            held->second.request->ask(held->second.place);
        }
    }
    for (GPIOReading* reading : readings) {
        held = find(reading->bit, held);
        if (held == m_Held.end()) {
            reading->cause = m_Refused[reading->bit];
        } else if (held->second.request->read(held->second.place, reading->level)) {
            if (!m_Unread.empty()) {
                m_Unread.erase(reading->bit);
            }
        } else {
            reading->cause = explain(reading->bit, errno);
            m_Unread.insert(reading->bit);
        }
    }
}

// Lines come in order most often: the one behind that of before is looked at first.
std::map<int, KernelLines::Held>::iterator KernelLines::find(int bit,
                                                             std::map<int, Held>::iterator before) {
    if (before != m_Held.end() && ++before != m_Held.end() && before->first == bit) {
        return before;
    }
    return m_Held.find(bit);
}

bool KernelLines::drive(int bit, int level, Cause& cause) {
    if (!m_Chip->has(bit, cause)) {
        return false;
    }
    auto held = m_Held.find(bit);
    if (held != m_Held.end() && held->second.request->getLines().size() > 1) {
        release(bit); // an input: it has no level to lose
        held = m_Held.end();
    }
    const KernelLine line{bit, KernelLine::OUTPUT, GPIOLineSettingsTable::get(m_Group, bit)};
    bool done = false;
    if (held != m_Held.end()) {
        done = held->second.request->drive(line.settings, level);
    } else if (Request request = KernelRequest::open(*m_Chip, {line}, level)) {
        m_Held[bit] = {std::move(request), 0};
        m_Refused.erase(bit);
        done = true;
    }
    if (!done) {
        cause = explain(bit, errno);
        if (held != m_Held.end() &&
            held->second.request->getLines().front().role == KernelLine::INPUT) {
            release(bit); // the kernel may have ended its reports
        }
        return false;
    }
    m_Changed.push_back(bit);
    return true;
}

// Of one request it is known which is ready; of several the kernel must tell.
void KernelLines::collect() {
    if (m_Reporting.size() == 1) {
        collect(*m_Reporting.front());
        return;
    }
    m_Reports.wait(
        0, [this](std::uint64_t bit) { collect(*m_Held.at(static_cast<int>(bit)).request); });
}

void KernelLines::collect(const KernelRequest& request) {
    if (!request.takeChanges(m_Group, m_Changed)) {
        m_IsGone = true; // a request is only ever lost with its chip
    }
}

bool KernelLines::isAnyRefused(const std::set<int>& bits) const {
    return std::any_of(m_Refused.begin(), m_Refused.end(),
                       [&](const auto& refused) { return bits.count(refused.first) != 0; });
}

bool KernelLines::isAnyUnsure(const std::set<int>& bits) const {
    const auto isAsked = [&](int bit) { return bits.count(bit) != 0; };
    return std::any_of(m_Silent.begin(), m_Silent.end(), isAsked) ||
           std::any_of(m_Unread.begin(), m_Unread.end(), isAsked);
}

bool KernelLines::isAnyChanged(const std::set<int>& bits) const {
    return std::any_of(m_Changed.begin(), m_Changed.end(),
                       [&](int bit) { return bits.count(bit) != 0; });
}

KernelLine KernelLines::describe(int bit) const {
    KernelLine line;
    line.bit = bit;
    line.role = m_Watched.count(bit) != 0 ? KernelLine::INPUT : KernelLine::AS_IS;
    line.settings = GPIOLineSettingsTable::get(m_Group, bit);
    line.isAlone = line.role == KernelLine::AS_IS && m_Chip->isOutput(bit);
    line.isSilent = m_Silent.count(bit) != 0;
    return line;
}

bool KernelLines::isHeld(int bit) const {
    const auto held = m_Held.find(bit);
    if (held == m_Held.end()) {
        return false;
    }
    const KernelLine& line = held->second.request->getLines()[held->second.place];
    return line.role != KernelLine::AS_IS || m_Watched.count(bit) == 0;
}

void KernelLines::take(const std::vector<KernelLine>& lines) {
    std::vector<KernelLine> together;
    for (const KernelLine& line : lines) {
        if (line.isAlone) {
            takeTogether({line});
            continue;
        }
        together.push_back(line);
        if (!KernelRequest::fit(together)) {
            together.pop_back();
            takeTogether(together);
            together = {line};
        }
    }
    takeTogether(together);
}

// One line that cannot be had must not cost the others. False when there was one.
bool KernelLines::takeTogether(const std::vector<KernelLine>& lines) {
    if (lines.empty()) {
        return true;
    }
    if (const Request request = KernelRequest::open(*m_Chip, lines)) {
        give(request);
        return true;
    }
    if (lines.size() == 1) {
        const KernelLine& line = lines.front();
        if (line.role == KernelLine::INPUT && !line.isSilent && isForWantOfReports(errno)) {
            return takeSilently(line);
        }
        m_Refused[line.bit] = explain(line.bit, errno);
        return false;
    }
    const auto middle = lines.begin() + static_cast<std::ptrdiff_t>(lines.size() / 2);
    const bool first = takeTogether({lines.begin(), middle});
    const bool second = takeTogether({middle, lines.end()});
    m_IsScattered = m_IsScattered || !first || !second;
    return first && second;
}

// Of the present errno. What is not reported can still be read.
bool KernelLines::takeSilently(KernelLine line) {
    const Cause cause = m_Chip->explain(line.bit, errno);
    line.isSilent = true;
    if (!takeTogether({line})) {
        return false;
    }
    m_Silent.insert(line.bit);
    GPIOFaultBook::tell(m_Group, line.bit,
                        " is looked at now and then, as its changes are not reported: " +
                            cause.text());
    return true;
}

void KernelLines::give(const Request& request) {
    bool isReporting = false;
    for (std::size_t place = 0; place < request->getLines().size(); ++place) {
        const KernelLine& line = request->getLines()[place];
        if (m_Refused.erase(line.bit) != 0) {
            m_Changed.push_back(line.bit); // nobody knows since when
        }
        m_Held[line.bit] = {request, place};
        isReporting = isReporting || line.role == KernelLine::INPUT;
    }
    Cause ignored;
    const auto bit = static_cast<std::uint64_t>(request->getLines().front().bit);
    if (isReporting && m_Reports.add(request->getDescriptor(), bit, ignored)) {
        m_Reporting.push_back(request.get());
    }
}

void KernelLines::endReports(const KernelRequest& request) {
    m_Reports.remove(request.getDescriptor());
    m_Reporting.erase(std::remove(m_Reporting.begin(), m_Reporting.end(), &request),
                      m_Reporting.end());
}

void KernelLines::pack() {
    if (!m_IsScattered) {
        return;
    }
    m_IsScattered = false;
    std::set<Request> small;
    for (const auto& [bit, held] : m_Held) {
        if (held.request->hasRoom()) {
            small.insert(held.request);
        }
    }
    if (small.size() > 1) {
        remake(small, -1);
    }
}

// Makes a line free again, for another use.
void KernelLines::release(int bit) {
    const auto held = m_Held.find(bit);
    if (held != m_Held.end()) {
        std::set<Request> request{held->second.request};
        remake(request, bit);
    }
}

// Closed before they are asked for anew: a line has one holder. What changes in between is not
// reported by the kernel, so the watched lines count as changed.
void KernelLines::remake(std::set<Request>& requests, int without) {
    std::vector<KernelLine> lines;
    for (const Request& request : requests) {
        endReports(*request);
        for (const KernelLine& line : request->getLines()) {
            m_Held.erase(line.bit);
            if (line.role == KernelLine::INPUT) {
                m_Changed.push_back(line.bit);
            }
            if (line.bit != without) {
                lines.push_back(line);
            }
        }
    }
    requests.clear();
    std::sort(lines.begin(), lines.end(),
              [](const KernelLine& one, const KernelLine& other) { return one.bit < other.bit; });
    take(lines);
}

Cause KernelLines::explain(int bit, int error) {
    m_IsGone = m_IsGone || error == ENODEV;
    return m_Chip->explain(bit, error);
}
