#pragma once

#include "board/documents/XmlElement.h"

#include <string>
#include <vector>

/// What one attribute of an element must be.
struct AttributeRule {
    enum Kind { NUMBER, FLAG, TEXT, CHOICE };

    /// Without a REQUIRED one the document fails; an EXPECTED one has a default that hardly
    /// anybody wants.
    enum Presence { REQUIRED, EXPECTED, OPTIONAL };

    std::string name;
    Kind kind;
    Presence presence;
    XmlElement::Range accepted = {}; ///< of a number; the reader refuses others
    XmlElement::Range likely = {};   ///< of a number, or of the bytes of a text
    std::vector<std::string> choices = {};
    std::string doubt = {}; ///< what is to be said wherever it stands
};

/// What may stand in an element.
struct ElementRule {
    /// Without a SINGLE or a REQUIRED one the document fails, as with a second SINGLE one. Of the
    /// others but ANY_NUMBER the reader takes the first and never looks at another.
    enum Occurrence { SINGLE, REQUIRED, OPTIONAL, ANY_NUMBER };

    std::string name;
    Occurrence occurrence;
    std::vector<AttributeRule> attributes;
    std::vector<ElementRule> children = {};
    std::vector<std::string> key = {}; ///< the numbers that no two of its siblings share
    bool isStrict = false;             ///< the reader refuses unknown elements in it
};
