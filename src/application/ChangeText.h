#pragma once

#include "application/Moment.h"
#include "platform/Cause.h"

#include <ostream>
#include <string>

namespace nvrhw {

/// "3 (door)", or "3" for a line without a name.
template <typename Each> std::string idAndName(const Each& each) {
    std::string text = std::to_string(each.id);
    if (!each.name.empty()) {
        text.append(" (").append(each.name).append(")");
    }
    return text;
}

/// "14:03:07.412 input 3 (door)": how the text of a change begins.
template <typename Change, typename Each>
void beginText(std::ostream& stream, const Change& change, const char* kind, const Each& each) {
    stream << clockText(change.time.wall) << ' ' << kind << ' ' << idAndName(each);
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
