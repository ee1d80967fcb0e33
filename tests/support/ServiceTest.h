#pragma once

#include "alarm/IOAlarmInListener.h"
#include "alarm/IOAlarmInManager.h"
#include "service/HardwareServiceFactory.h"
#include "support/SimulatedBoard.h"

#include <stdexcept>

// The valid levels of the sample board's inputs, by id: eight to a bank.
inline const std::string INPUTS = "1101101100111101";

/// A factory beside the one of the process.
class Factory : public HardwareServiceFactory {
public:
    using IServiceFactory::registerService;

    template <typename T> T& get(const std::string& name) {
        auto* const holder = findService<T>(name);
        return holder != nullptr ? *holder->operator->()
                                 : throw std::runtime_error("no service " + name);
    }
};

/// A test on a copy of the sample board.
class ServiceTest : public testing::Test {
protected:
    // The handler's manager outlives its factory; one that nobody counts takes its place.
    ~ServiceTest() noexcept override {
        SafePointer<IOAlarmInManager> untracked(new IOAlarmInManager);
        IOAlarmInListener().setIOAlarmInManager(untracked);
    }

    SimulatedBoard m_Board{NVRHW_SAMPLE_BOARD};
};
