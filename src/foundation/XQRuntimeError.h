#pragma once

#include "platform/base/Export.h"

#include <exception>
#include <string>

/// The one exception type that the library's own code raises: misuse of a SafePointer.
class NVRHW_API XQRuntimeError : public std::exception {
public:
    /// Keeps a copy of the text that what() gives.
    explicit XQRuntimeError(const std::string& message) : m_Message(message) {}

    /// The misuse, and for which type.
    const char* what() const noexcept override { return m_Message.c_str(); }

private:
    std::string m_Message;
};
