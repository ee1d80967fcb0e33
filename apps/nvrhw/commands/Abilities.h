#pragma once

#include "ability/DeviceAbilityCollector.h"

/// Reads what the recorder can do, from the board's ability documents. Raises CommandError when one
/// cannot be read.
void readAbilities(DeviceAbilityCollector& abilities);
