#pragma once

#include "platform/base/Export.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <typeinfo>

/// The common root of all SafePointer<T>, so that one container can hold pointers to anything.
class NVRHW_API BaseSafePointer {
public:
    // A release that finds its record counting another object raises XQRuntimeError.
    virtual ~BaseSafePointer() noexcept(false) {}

protected:
    /// The name of a type as reports give it: without the tag of NVRHW_API, which is the symbols',
    /// and without the leading "*" by which some run-times mark local types. Never freed, for
    /// reports are made until the very end; when memory is short, with the tag.
    static const char* reportName(const std::type_info& type) noexcept {
        constexpr char tag[] = "B5nvrhw";
        const char* from = type.name() + (*type.name() == '*' ? 1 : 0);
        const char* found = std::strstr(from, tag);
        char* const name = found ? new (std::nothrow) char[std::strlen(from) + 1] : nullptr;
        if (name == nullptr) {
            return from;
        }
        char* to = name;
        for (; found != nullptr; found = std::strstr(from, tag)) {
            to = std::copy(from, found, to);
            from = found + std::strlen(tag);
        }
        *std::copy(from, from + std::strlen(from), to) = '\0';
        return name;
    }
};
