#pragma once

/// The whole interface for applications, namespace nvrhw.
#include "application/Board.h"
