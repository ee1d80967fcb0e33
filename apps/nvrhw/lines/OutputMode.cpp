#include "lines/OutputMode.h"

#include "print/Console.h"
#include "print/Duration.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr double SECOND = 1000.0; // milliseconds

std::string format(const char* pattern, double value) {
    char text[32];
    std::snprintf(text, sizeof text, pattern, value);
    return text;
}

void expectDone(const nvrhw::Output& output, const nvrhw::Result& result) {
    if (!result) {
        OutputMode::fail(output, result.error());
    }
}

} // namespace

std::string OutputMode::frequencies() {
    return format("%g to ", LOWEST_FREQUENCY) + format("%g", HIGHEST_FREQUENCY);
}

const char* OutputMode::name() const {
    return kind == FLASH ? "flash" : kind == PULSE ? "pulse" : "steady";
}

std::string OutputMode::text() const {
    std::string text = name();
    if (kind == FLASH) {
        text += format(" %g/s", frequency);
    }
    if (kind == PULSE) {
        text += " of 10 ms";
    } else if (timeout.count() > 0) {
        text += " for " + Duration::text(timeout.count());
    }
    return text + (isInverted ? ", inverted" : "");
}

void OutputMode::trigger(const nvrhw::Output& output) const {
    output.setInverted(isInverted);
    expectDone(output, start(output));
}

void OutputMode::cancel(const nvrhw::Output& output) const {
    output.setInverted(isInverted);
    expectDone(output, output.rest());
}

void OutputMode::fail(const nvrhw::Output& output, const nvrhw::Error& error) {
    const std::string line = "group " + std::to_string(output.line.bank) + ", bit " +
                             std::to_string(output.line.bit) + " cannot be driven: ";
    const bool isUndriven = error.code() == nvrhw::Error::NotDriven;
    throw CommandError("output " + std::to_string(output.id) + ": " + (isUndriven ? line : "") +
                       (error.causes().empty() ? error.what() : error.causes().front().text()));
}

nvrhw::Result OutputMode::start(const nvrhw::Output& output) const {
    const bool hasEnd = timeout.count() > 0;
    if (kind == PULSE) {
        return output.pulse();
    }
    if (kind == STEADY) {
        return hasEnd ? output.hold(timeout) : output.hold();
    }
    const nvrhw::Output::Time period(std::llround(2 * SECOND / frequency));
    return hasEnd ? output.flash(period, timeout) : output.flash(period);
}
