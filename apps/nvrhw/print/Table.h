#pragma once

#include "print/Fact.h"

#include <string>
#include <vector>

/// A table for people, of facts: aligned columns, numbers to the right. A column without any
/// content is left out.
class Table {
public:
    /// A row for each record, below the titles of its facts, if they are wanted. A list of records
    /// among the facts that has a title but no text makes a row of each of its records.
    void addList(const std::vector<Record>& records, bool hasTitles = true);

    /// A row for each fact: its title, its words and its unit; below a line with `heading`, when
    /// there is one, a little to the right.
    void addFacts(const Record& facts, const std::string& heading = "");

    /// The lines of the table, styled when `hasColours`. In `limit` columns, unless that is 0, as
    /// much is cut off the longest texts as is too wide.
    std::string text(bool hasColours, int limit) const;

    /// Prints it on standard output, as wide as that is.
    void print() const;

    /// Prints such a list, as a table or as a document of JSON.
    static void printList(const std::vector<Record>& records, bool asJson);

private:
    struct Cell {
        std::string text;
        Style style = PLAIN;
        bool isRight = false;
    };
    using Row = std::vector<Cell>;

    std::vector<int> widths(int limit) const;

    Row m_Titles;
    std::vector<Row> m_Rows;
};
