#pragma once

#include "ElementRule.h"

/// What the readers of a board's XML documents accept, as tables.
class DocumentRules {
public:
    DocumentRules() = delete;

    static constexpr XmlElement::Range GROUPS{0, 32767};
    static constexpr XmlElement::Range BIT_POSITIONS{0, 65535};

    static const ElementRule& hardware();
    static const ElementRule& ability();
    static const ElementRule& fileSystems();
    static const ElementRule& monitors();
    static const ElementRule& clock();
};
