#pragma once

#include "application/Error.h"
#include "application/Input.h"
#include "application/Line.h"
#include "application/Output.h"
#include "application/Registration.h"
#include "platform/DeviceAbility.h"
#include "platform/MachineInfo.h"
#include "platform/MonitorParam.h"
#include "platform/SoftwarePackage.h"
#include "platform/base/Export.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace nvrhw {

class BoardCore;

/// Asks for calls in the thread that sees a change, without the dispatch thread between; see
/// Board::onInput().
struct InPlace {};
constexpr InPlace inPlace{};

/// How a board is opened, and what it leaves behind.
struct NVRHW_API BoardOptions {
    /// What comes of the outputs when the board is destroyed.
    enum AtEnd {
        RestUnfinished, ///< what flashes or is held for a time comes to rest; the others stay
        RestAll,        ///< every output that this board has driven comes to rest
        LeaveAll        ///< every line stays at the level it has
    };

    /// The root directory. Empty: the process's own, which NVRHW_ROOT sets; else "/".
    std::string directory{};

    AtEnd atEnd = RestUnfinished; ///< see there

    /// Needs nothing but the hardware configuration and the GPIO device: other documents may be
    /// wrong. machine(), software() and abilities() are then read when they are first asked for,
    /// and empty, with a log record, where that fails.
    bool linesOnly = false;

    /// False: the inputs are not watched, and Board::onInput() raises Error::BadArgument. What is
    /// known of inputs is as of the last Board::inputs() or Board::input(), which look at the
    /// lines. For programs that need a board for a moment: no line of an input is held before that.
    bool watch = true;

    /// How many changes wait for a callback before the latest state of an input takes the place of
    /// those before it.
    unsigned mailbox = 256;
};

/// The board, open for as long as the object lives: its machine, its alarm inputs and outputs.
///
///     nvrhw::Board board;
///     auto watch = board.onInput([](const nvrhw::InputChange& change) { std::cout << change; });
///
/// One at a time in a process, and as many as one likes one after the other: the root directory and
/// the detector's handler are the process's. All operations are thread-safe and may be called from
/// inside callbacks, but for the destructor: a board that is destroyed inside a callback of its own
/// logs that as an error and ends when the callback has returned.
class NVRHW_API Board {
public:
    /// Reads the documents, opens the GPIO device and begins to watch the inputs; drives nothing.
    /// Raises Error::BadBoard with all causes, or Error::Busy. Lines that cannot be read are
    /// states, not errors.
    Board();
    explicit Board(const std::string& directory);
    explicit Board(const BoardOptions& options);

    /// The board of the HardwareServiceFactory that runs: the same services, so that an application
    /// can move over piece by piece. The factory is started before and stopped after; the outputs
    /// are left as they are. Raises Error::NoService when it does not run. Neither this nor the
    /// destructor of the board, nor Input::setInverted(), may be called from inside an
    /// IHardwareAlarmListener, with the lock of the inputs' manager held.
    static Board running();

    /// No callback runs or comes any more when it has returned. The outputs come to rest, or not,
    /// as the options say.
    ~Board();
    Board(const Board&) = delete;
    Board& operator=(const Board&) = delete;

    /// The root directory.
    const std::string& directory() const;

    /// What the documents say; they live as long as the board.
    const MachineInfo& machine() const;
    const SoftwarePackage& software() const;
    const NVRDeviceAbility& abilities() const;

    /// The parameters of all monitors, read now. Raises Error::NotStored when the file cannot be
    /// read.
    std::vector<MonitorParam> monitors() const;

    /// Stores the parameters of a monitor, a new one or one there is.
    Result setMonitor(const MonitorParam& param) const;

    /// In the order of the hardware configuration.
    std::vector<Input> inputs() const;
    std::vector<Output> outputs() const;
    std::vector<LineUse> lines() const;

    /// One of them, by its id; as text, which a user may have typed, by id or name. None, or
    /// several of this name: raises Error::NoSuchLine, whose text lists those there are.
    Input input(int id) const;
    Input input(const std::string& idOrName) const;
    Output output(int id) const;
    Output output(const std::string& idOrName) const;

    /// Calls the callback with the present state of every input, exactly once and before anything
    /// else, and then with each change of a state, in its order, lost and found lines included; no
    /// two successive states of one input are equal.
    ///
    /// The calls come from the board's dispatch thread, one at a time: whatever the callback does,
    /// no alarm waits for it. When `mailbox` changes are waiting, an input's further ones collapse
    /// to its latest state, and the next change told says how many were left out. An exception out
    /// of the callback is logged and ends nothing.
    ///
    /// From inside the callback everything may be called; it may end its own registration, but
    /// should end no other. The first calls may come before this has returned a Registration:
    /// Registration::endCurrent() needs none. Whoever keeps one as a member puts it behind what the
    /// callback uses, so that it ends first.
    [[nodiscard]] Registration onInput(InputCallback callback) const;

    /// The same for one input. Raises Error::NoSuchLine.
    [[nodiscard]] Registration onInput(InputCallback callback, int id) const;

    /// The same without the dispatch thread: the present states come before it returns, in the
    /// calling thread; changes come in the thread that sees them, which as a rule is the
    /// detector's. While the callback runs that thread sees nothing more: it must be quick and must
    /// not wait for other threads. It is never called by two threads at a time.
    [[nodiscard]] Registration onInput(InPlace, InputCallback callback) const;
    [[nodiscard]] Registration onInput(InPlace, InputCallback callback, int id) const;

    /// Calls the callback, from the dispatch thread, when an operation of an output begins, ends,
    /// is replaced or fails, whoever asked for it in this process.
    [[nodiscard]] Registration onOutput(OutputCallback callback) const;

    /// The same, and in its order each drive of an output's line to another level than the drive
    /// before it; the first one and the one that ends a failure are told in any case.
    [[nodiscard]] Registration onDrive(OutputCallback callback) const;

private:
    struct Running {};
    explicit Board(Running);
    Registration subscribe(InputCallback callback, std::optional<int> id, bool isInPlace) const;

    std::shared_ptr<BoardCore> m_Core;
};

} // namespace nvrhw
