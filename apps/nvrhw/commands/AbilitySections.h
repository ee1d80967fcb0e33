#pragma once

#include "commands/Abilities.h"
#include "print/Console.h"
#include "print/Table.h"

/// The abilities section by section, as tables for people and as one document for programs.
class AbilitySections {
public:
    explicit AbilitySections(const Abilities& abilities) : m_Abilities(abilities) {}

    std::string text(bool hasColours) const;
    Json json() const;

private:
    Table general() const;
    Table resolutions() const;
    Table monitors() const;
    Table layouts() const;
    Table decoding() const;
    Table network() const;
    Table web() const;
    Table fileSystems() const;

    const Abilities& m_Abilities;
};
