#pragma once

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"

#include <string>

/// getProperty() of nodes and items.
class ConfigProperty {
public:
    template <typename Value>
    static int get(const XmlElement& element, const std::string& name, Value& out) {
        bool found = false;
        const int whole = ConfigError::guard("XmlConfigure", "ConfigProperty", __LINE__,
                                             [&] { found = element.read(name, out); });
        return whole != 0 && found ? 1 : 0;
    }
};
