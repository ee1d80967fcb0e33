#include "lines/LineTable.h"

LineTable::LineTable(const Table::Column& own)
    : m_Table({{"ID", Table::RIGHT},
               {"NAME"},
               {"BANK", Table::RIGHT},
               {"BIT", Table::RIGHT},
               {"VALID", Table::RIGHT},
               own,
               {"LEVEL", Table::RIGHT},
               {"STATE"},
               {"CAUSE"}}) {}

void LineTable::add(const LineState& state, const Table::Cell& own, const char* name,
                    bool isRaised) {
    const Line& line = state.line;
    const Table::Style style = !state.isReadable() ? Table::DOUBTFUL
                               : isRaised          ? Table::BAD
                                                   : Table::GOOD;
    m_Table.add({line.id,
                 line.name,
                 line.group,
                 line.bit,
                 line.validLevel,
                 own,
                 state.isReadable() ? std::to_string(state.level) : "-",
                 {name, style},
                 state.cause});
}
