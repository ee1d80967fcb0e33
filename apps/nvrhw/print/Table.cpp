#include "print/Table.h"

#include "print/Console.h"
#include "print/Text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr int GAP = 2;
constexpr int HEADING_INDENT = 2;
constexpr int SHORTEST_CUT = 8; // a text is not cut to less than this for the sake of others
constexpr const char* STYLES[] = {"",           "\033[1m",  "\033[2m",   "\033[32m",
                                  "\033[1;31m", "\033[33m", "\033[1;36m"};
constexpr char STYLE_END[] = "\033[0m";

std::string styled(const std::string& text, Style style, bool hasColours) {
    return hasColours && style != PLAIN && !text.empty() ? STYLES[style] + text + STYLE_END : text;
}

std::string blanks(int count) { return std::string(static_cast<std::size_t>(count), ' '); }

// Without the lists among its facts: a record for each of theirs.
std::vector<Record> flattened(const Record& record) {
    std::vector<Record> rows(1);
    for (const Fact& fact : record) {
        const auto* list = std::get_if<std::vector<Record>>(&fact.value);
        if (list == nullptr || fact.title.empty() || !fact.text.empty()) {
            for (Record& row : rows) {
                row.push_back(fact);
            }
        } else if (!list->empty()) {
            std::vector<Record> more;
            for (const Record& row : rows) {
                for (const Record& each : *list) {
                    more.push_back(row);
                    more.back().insert(more.back().end(), each.begin(), each.end());
                }
            }
            rows = std::move(more);
        }
    }
    return rows;
}

} // namespace

Table::Row Table::rowOf(const Record& record) {
    Row row;
    for (const Fact& fact : record) {
        const std::string words = Text::harmless(fact.words());
        if (!fact.joint.empty()) {
            row.cells.back().text += fact.joint + words;
        } else if (!fact.title.empty()) {
            row.cells.push_back({words, fact.style, fact.isNumber()});
        }
    }
    return row;
}

Table::Row Table::titlesOf(const Record& record) {
    Row row;
    row.isTitle = true;
    for (const Fact& fact : record) {
        if (!fact.title.empty()) {
            row.cells.push_back({fact.title, STRONG, fact.isNumber()});
        }
    }
    return row;
}

void Table::addList(const std::vector<Record>& records, bool hasTitles) {
    Row titles;
    const std::size_t place = m_Rows.size();
    for (const Record& record : records) {
        for (const Record& each : flattened(record)) {
            m_Rows.push_back(rowOf(each));
            if (m_Rows.back().cells.size() > titles.cells.size()) {
                titles = titlesOf(each);
            }
        }
    }
    if (hasTitles && !titles.cells.empty()) {
        m_Rows.insert(m_Rows.begin() + static_cast<std::ptrdiff_t>(place), titles);
    }
}

void Table::addFacts(const Record& facts, const std::string& heading) {
    if (!heading.empty()) {
        m_Indent = HEADING_INDENT;
        addHeading(heading);
    }
    const bool areNumbers = std::all_of(facts.begin(), facts.end(), [](const Fact& fact) {
        return fact.isNumber() || std::holds_alternative<bool>(fact.value);
    });
    for (const Fact& fact : facts) {
        if (fact.title.empty()) {
            continue;
        }
        m_Rows.push_back({{{Text::harmless(fact.title), PLAIN, false},
                           {Text::harmless(fact.words()), fact.style, areNumbers},
                           {fact.unit, PLAIN, false}}});
    }
}

void Table::addHeading(const std::string& text) {
    m_Rows.push_back({{{text, STRONG, false}}, true});
}

std::string Table::text(bool hasColours, int limit) const {
    const int room = limit > 0 ? limit - m_Indent : std::numeric_limits<int>::max();
    const std::vector<int> columnWidths = narrowed(widths(), room);
    std::string text;
    for (const Row& row : m_Rows) {
        const Cell& first = row.cells.front();
        text += row.isHeading ? styled(first.text, first.style, hasColours)
                              : blanks(m_Indent) + line(row, columnWidths, hasColours, room);
        text += '\n';
    }
    return text;
}

void Table::print() const { Console::print(text(Console::hasColours(), Console::columns())); }

// 0 for a column that has nothing but its title.
std::vector<int> Table::widths() const {
    std::vector<int> widths;
    for (const bool areTitles : {false, true}) {
        for (const Row& row : m_Rows) {
            if (row.isHeading || row.isTitle != areTitles) {
                continue;
            }
            widths.resize(std::max(widths.size(), row.cells.size()), 0);
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                const int width = Text::width(row.cells[i].text);
                widths[i] = areTitles && widths[i] == 0 ? 0 : std::max(widths[i], width);
            }
        }
    }
    return widths;
}

// Numbers keep their columns, texts give what is too much, the widest first.
std::vector<int> Table::narrowed(std::vector<int> widths, int limit) const {
    int total = -GAP;
    for (const int width : widths) {
        total += width == 0 ? 0 : width + GAP;
    }
    std::vector<bool> isText(widths.size(), true);
    for (const Row& row : m_Rows) {
        for (std::size_t i = 0; !row.isHeading && i < row.cells.size(); ++i) {
            isText[i] = isText[i] && !row.cells[i].isRight;
        }
    }
    for (; total > limit; --total) {
        int* widest = nullptr;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (isText[i] && widths[i] > (widest == nullptr ? SHORTEST_CUT : *widest)) {
                widest = &widths[i];
            }
        }
        if (widest == nullptr) {
            break; // the end of each line is cut
        }
        --*widest;
    }
    return widths;
}

std::string Table::line(const Row& row, const std::vector<int>& widths, bool hasColours, int left) {
    std::string line;
    int padding = 0; // written only before a further content: no blanks at the end
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        if (widths[i] == 0) {
            continue;
        }
        const Cell& cell = row.cells[i];
        const std::string text = Text::cut(cell.text, std::min(widths[i], left - padding));
        const int fill = std::max(widths[i] - Text::width(text), 0);
        padding += cell.isRight ? fill : 0;
        if (!text.empty()) {
            line += blanks(padding) + styled(text, cell.style, hasColours);
            left -= padding + Text::width(text);
            padding = 0;
        }
        padding += (cell.isRight ? 0 : fill) + GAP;
    }
    return line;
}
