#pragma once

#include "lines/LineReader.h"
#include "print/Table.h"

/// Lines and their states: what every line has, and one column that only its kind has.
class LineTable {
public:
    explicit LineTable(const Table::Column& own);

    /// `name` is that of the state; a raised line, in alarm or active, stands out.
    void add(const LineState& state, const Table::Cell& own, const char* name, bool isRaised);

    void print() const { m_Table.print(); }

private:
    Table m_Table;
};
