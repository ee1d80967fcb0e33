#pragma once

/// The whole interface for applications, namespace nvrhw.
#include "application/Board.h"
#include "application/Service.h"
#include "application/Signal.h"
