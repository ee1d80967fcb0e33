#include "platform/Insight.h"

#include "board/check/BoardCheck.h"
#include "board/documents/ConfigError.h"
#include "board/gpio/GPIOBankTable.h"
#include "board/gpio/bank/GPIOEdgeTable.h"
#include "platform/Diagnostics.h"

static_assert(static_cast<int>(Insight::WATCH) == GPIOFaultBook::WATCH, "in the same order");

bool Insight::findLineFault(Operation operation, int group, int bit, Cause& cause) {
    const auto banks = GPIOBankTable::of(GlobalEnv::getInstance()->resolve(GPIODevice::PATH));
    return banks->getFaultBook().find(static_cast<GPIOFaultBook::Operation>(operation), group, bit,
                                      cause);
}

bool Insight::findDocumentFault(Cause& cause) {
    const Cause& fault = ConfigError::lastFault();
    if (fault) {
        cause = fault;
    }
    return static_cast<bool>(fault);
}

bool Insight::findLastEdge(int group, int bit, std::int64_t& nanoseconds) {
    return GPIOEdgeTable::find(group, bit, nanoseconds);
}

std::vector<Cause> Insight::findDocumentErrors(bool linesOnly) {
    std::vector<Cause> errors;
    for (const Finding& finding :
         BoardCheck::run(linesOnly ? BoardCheck::HARDWARE : BoardCheck::DOCUMENTS)) {
        if (finding.severity == Finding::ERROR) {
            errors.push_back({finding.subject + ": " + finding.cause, finding.file, finding.line});
        }
    }
    return errors;
}
