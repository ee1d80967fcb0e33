#include "application/Board.h"

#include "application/BoardCore.h"
#include "application/ChangeText.h"
#include "application/dispatch/Subscription.h"
#include "config/Monitor.h"
#include "platform/Insight.h"

#include <utility>

namespace nvrhw {

namespace {

constexpr std::size_t MOST_LISTED = 32;

std::string listed(const std::vector<LineUse>& uses) {
    std::string text;
    for (std::size_t i = 0; i < uses.size() && i < MOST_LISTED; ++i) {
        text += (text.empty() ? "" : ", ") + idAndName(uses[i]);
    }
    text += uses.size() > MOST_LISTED
                ? " and " + std::to_string(uses.size() - MOST_LISTED) + " more"
                : "";
    return text.empty() ? "there are none" : "there are " + text;
}

std::size_t indexOf(const std::vector<LineUse>& uses, const char* what, int id) {
    for (std::size_t i = 0; i < uses.size(); ++i) {
        if (uses[i].id == id) {
            return i;
        }
    }
    throw Error(Error::NoSuchLine,
                std::string("there is no ") + what + std::to_string(id) + "; " + listed(uses));
}

// An id goes before a name that looks like one.
std::size_t indexOf(const std::vector<LineUse>& uses, const char* what, const std::string& text) {
    std::vector<LineUse> named;
    for (const LineUse& use : uses) {
        if (std::to_string(use.id) == text) {
            return indexOf(uses, what, use.id);
        }
        if (use.name == text && !text.empty()) {
            named.push_back(use);
        }
    }
    if (named.size() == 1) {
        return indexOf(uses, what, named.front().id);
    }
    throw Error(Error::NoSuchLine, std::string("there is ") +
                                       (named.empty() ? "no " : "more than one ") + what + "\"" +
                                       text + "\"; " + listed(named.empty() ? uses : named));
}

Error documentError(const std::string& what) {
    Cause cause{"the log says why"};
    Insight::findDocumentFault(cause);
    return {Error::NotStored, what, {cause}};
}

void expectCallable(bool isCallable) {
    if (!isCallable) {
        throw Error(Error::BadArgument, "an empty callback");
    }
}

constexpr char INPUT[] = "input ";
constexpr char OUTPUT[] = "output ";

} // namespace

Board::Board() : Board(BoardOptions()) {}

Board::Board(const std::string& directory) {
    BoardOptions options;
    options.directory = directory;
    m_Core = std::make_shared<BoardCore>(options);
}

Board::Board(const BoardOptions& options) : m_Core(std::make_shared<BoardCore>(options)) {}

Board::Board(Running /*unused*/) : m_Core(std::make_shared<BoardCore>(BoardCore::OfFactory())) {}

Board Board::running() { return Board(Running()); }

Board::~Board() {
    if (Subscription::isInside()) {
        m_Core->closeLater();
    } else {
        m_Core->close();
    }
}

const std::string& Board::directory() const { return m_Core->options().directory; }

const MachineInfo& Board::machine() const { return m_Core->machine(); }

const SoftwarePackage& Board::software() const { return m_Core->software(); }

const NVRDeviceAbility& Board::abilities() const { return m_Core->abilities(); }

std::vector<MonitorParam> Board::monitors() const {
    std::vector<MonitorParam> params;
    if (::Monitor().getAllMonitorParam(params) == 0) {
        throw documentError("the monitors' parameters cannot be read");
    }
    return params;
}

Result Board::setMonitor(const MonitorParam& param) const {
    if (::Monitor().setMonitorParam(param) != 1) {
        return documentError("the parameters of monitor " + std::to_string(param.getMonitorId()) +
                             " cannot be stored");
    }
    return {};
}

std::vector<Input> Board::inputs() const { return m_Core->inputs().inputs(); }

std::vector<Output> Board::outputs() const { return m_Core->outputs().outputs(); }

std::vector<LineUse> Board::lines() const {
    std::vector<LineUse> lines = m_Core->inputUses();
    const std::vector<LineUse>& outputs = m_Core->outputs().uses();
    lines.insert(lines.end(), outputs.begin(), outputs.end());
    return lines;
}

Input Board::input(int id) const {
    return m_Core->inputs().at(indexOf(m_Core->inputUses(), INPUT, id));
}

Input Board::input(const std::string& name) const {
    return m_Core->inputs().at(indexOf(m_Core->inputUses(), INPUT, name));
}

Output Board::output(int id) const {
    return m_Core->outputs().at(indexOf(m_Core->outputs().uses(), OUTPUT, id));
}

Output Board::output(const std::string& name) const {
    return m_Core->outputs().at(indexOf(m_Core->outputs().uses(), OUTPUT, name));
}

Registration Board::onInput(InputCallback callback) const {
    return subscribe(std::move(callback), std::nullopt, false);
}

Registration Board::onInput(InputCallback callback, int id) const {
    return subscribe(std::move(callback), id, false);
}

Registration Board::onInput(InPlace /*unused*/, InputCallback callback) const {
    return subscribe(std::move(callback), std::nullopt, true);
}

Registration Board::onInput(InPlace /*unused*/, InputCallback callback, int id) const {
    return subscribe(std::move(callback), id, true);
}

Registration Board::subscribe(InputCallback callback, std::optional<int> id, bool isInPlace) const {
    if (!m_Core->options().watch) {
        throw Error(Error::BadArgument, "this board does not watch its inputs");
    }
    expectCallable(static_cast<bool>(callback));
    InputModel& inputs = m_Core->inputs();
    std::optional<std::size_t> only;
    if (id.has_value()) {
        only = indexOf(inputs.uses(), INPUT, *id);
    }
    return Registration(
        inputs.subscribe(std::move(callback), only, isInPlace, m_Core->options().mailbox));
}

Registration Board::onOutput(OutputCallback callback) const {
    expectCallable(static_cast<bool>(callback));
    return Registration(
        m_Core->outputs().subscribe(std::move(callback), false, m_Core->options().mailbox));
}

Registration Board::onDrive(OutputCallback callback) const {
    expectCallable(static_cast<bool>(callback));
    return Registration(
        m_Core->outputs().subscribe(std::move(callback), true, m_Core->options().mailbox));
}

} // namespace nvrhw
