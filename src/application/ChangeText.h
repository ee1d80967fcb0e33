#pragma once

#include "application/Moment.h"
#include "platform/Cause.h"

#include <ostream>

namespace nvrhw {

/// "14:03:07.412 input 3 (door)": how the text of a change begins.
template <typename Change, typename Each>
void beginText(std::ostream& stream, const Change& change, const char* kind, const Each& each) {
    stream << clockText(change.time.wall) << ' ' << kind << ' ' << each.id;
    if (!each.name.empty()) {
        stream << " (" << each.name << ')';
    }
}

/// How it ends: with the cause and what was left out, if there is any.
template <typename Change> std::ostream& endText(std::ostream& stream, const Change& change) {
    if (change.cause) {
        stream << ": " << change.cause.text();
    }
    if (change.leftOut > 0) {
        stream << " (" << change.leftOut << " changes before it left out)";
    }
    return stream;
}

} // namespace nvrhw
