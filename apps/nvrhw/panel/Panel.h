#pragma once

#include "lines/BoardLines.h"
#include "print/Signals.h"

#include <memory>

/// Shows the lines until its user or a signal ends it, or the terminal has gone. Then says what
/// was switched off with it, and what stays on. Raises CommandError when the terminal cannot show
/// a panel. The signals must be those of a terminal: the ends, SIGQUIT, SIGTSTP and SIGWINCH.
void runPanel(const BoardLines& lines, const Signals& signals);
