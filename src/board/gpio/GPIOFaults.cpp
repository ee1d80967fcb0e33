#include "board/gpio/GPIOFaults.h"

#include "board/gpio/GPIOBankTable.h"
#include "platform/Diagnostics.h"

bool GPIOFaults::find(Operation operation, int group, int bit, Cause& cause) {
    const auto banks = GPIOBankTable::of(GlobalEnv::getInstance()->resolve(GPIODevice::PATH));
    return banks->getFaultBook().find(operation, group, bit, cause);
}
