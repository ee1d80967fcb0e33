#pragma once

#include <cerrno>
#include <string>
#include <system_error>

/// "<what>: <the system's text for the present errno>"
inline std::string errnoText(const std::string& what) {
    return what + ": " + std::generic_category().message(errno);
}
