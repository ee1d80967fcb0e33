#pragma once

#include "alarm/IOAlarmInManager.h"
#include "application/Board.h"
#include "application/InputModel.h"
#include "application/InputWatch.h"
#include "application/OutputModel.h"
#include "application/dispatch/Dispatcher.h"
#include "application/dispatch/LifeGuard.h"
#include "config/MachineConfigurationDetail.h"
#include "foundation/SafePointer.h"
#include "gpio/GPIOOperator.h"

#include <memory>
#include <mutex>
#include <string>

namespace nvrhw {

/// What is behind a Board. It outlives that while the end of a callback is waited for.
class BoardCore : public std::enable_shared_from_this<BoardCore> {
public:
    /// A board of its own. Raises Error.
    explicit BoardCore(const BoardOptions& options);

    /// The factory's.
    struct OfFactory {};
    explicit BoardCore(OfFactory);

    ~BoardCore() noexcept;
    BoardCore(const BoardCore&) = delete;
    BoardCore& operator=(const BoardCore&) = delete;

    /// Ends everything; not to be called inside a callback.
    void close();

    /// The same, in the dispatch thread, when the callback that calls it has returned.
    void closeLater();

    const BoardOptions& options() const { return m_Options; }
    const MachineInfo& machine();
    const SoftwarePackage& software();
    const NVRDeviceAbility& abilities();

    /// Looks at the lines first, on a board that does not watch them.
    InputModel& inputs() const;

    /// The uses of the inputs, without a look.
    const std::vector<LineUse>& inputUses() const { return m_Inputs->uses(); }
    OutputModel& outputs() const { return *m_Outputs; }

private:
    /// The place of the one board of the process, and its root directory; given back by itself.
    class Place {
    public:
        explicit Place(const std::string& directory);
        ~Place();
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

    private:
        std::string m_OldDirectory;
    };

    /// The services, the board's own or shared with the factory.
    struct Services {
        SafePointer<MachineConfigurationDetail> detail{};
        SafePointer<GPIOOperator> gpioOperator{};
        SafePointer<IOAlarmInManager> manager{};
    };

    void expectDocuments() const;
    void readLines();
    int readMachine();
    int readAbilities();
    void openLines();
    void begin();
    void watch();

    BoardOptions m_Options;
    Place m_Place;
    const bool m_IsOwn;
    std::unique_ptr<Services> m_Services = std::make_unique<Services>();
    std::once_flag m_MachineRead; // the two flags are for a board that was opened for its lines
    std::once_flag m_AbilitiesRead;
    MachineInfo m_Machine{};
    SoftwarePackage m_Software{};
    NVRDeviceAbility m_Abilities{};
    const std::shared_ptr<Dispatcher> m_Dispatcher = std::make_shared<Dispatcher>();
    const std::shared_ptr<LifeGuard> m_Life = std::make_shared<LifeGuard>();
    std::unique_ptr<InputWatch> m_Watch{}; // of a board of its own
    std::shared_ptr<InputModel> m_Inputs{};
    std::shared_ptr<OutputModel> m_Outputs{};
};

} // namespace nvrhw
