#pragma once

#include "BenchBoard.h"
#include "platform/Diagnostics.h"
#include "service/HardwareServiceFactory.h"

/// The process's services, running as long as the object lives. They read their documents once in a
/// process, so all recorders have one board: 16 inputs, 4 outputs.
class Recorder {
public:
    Recorder() {
        GlobalEnv::getInstance()->setRootDirectory(board().root());
        HardwareServiceFactory::getInstance()->start();
    }
    ~Recorder() { HardwareServiceFactory::getInstance()->stop(); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    static const BenchBoard& board() {
        static const BenchBoard board(16, 4);
        return board;
    }

    template <typename Service> static Service& get(const char* name) {
        auto* const service = HardwareServiceFactory::getInstance()->getService(name);
        return *dynamic_cast<SafePointer<Service>&>(*service).get();
    }
};
