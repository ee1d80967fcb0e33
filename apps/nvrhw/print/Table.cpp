#include "print/Table.h"

#include "print/Console.h"
#include "print/Text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr int GAP = 2;
constexpr char INDENT[] = "  ";  // below a heading
constexpr int SHORTEST_CUT = 10; // a text is not cut to less than this for the sake of others
constexpr const char* STYLES[] = {"",           "\033[1m",  "\033[2m",   "\033[32m",
                                  "\033[1;31m", "\033[33m", "\033[1;36m"};
constexpr char STYLE_END[] = "\033[0m";

std::string blanks(int count) { return std::string(static_cast<std::size_t>(count), ' '); }

// Without the lists among its facts: a record for each of theirs.
std::vector<Record> flattened(const Record& record) {
    std::vector<Record> rows(1);
    for (const Fact& fact : record) {
        const auto* list = std::get_if<std::vector<Record>>(&fact.value);
        const bool isList = list != nullptr && !fact.title.empty() && fact.text.empty();
        std::vector<Record> more;
        for (const Record& row : rows) {
            for (const Record& each :
                 isList && !list->empty() ? *list : std::vector<Record>{{fact}}) {
                more.push_back(row);
                more.back().insert(more.back().end(), each.begin(), each.end());
            }
        }
        rows = std::move(more);
    }
    return rows;
}

} // namespace

void Table::addList(const std::vector<Record>& records, bool hasTitles) {
    for (const Record& record : records) {
        for (const Record& each : flattened(record)) {
            Row titles;
            Row row;
            for (const Fact& fact : each) {
                const std::string words = Text::harmless(fact.words());
                if (!fact.joint.empty()) {
                    row.back().text += fact.joint + words;
                } else if (!fact.title.empty()) {
                    titles.push_back({fact.title, STRONG, fact.isNumber()});
                    row.push_back({words, fact.style, fact.isNumber()});
                }
            }
            m_Titles = hasTitles && titles.size() > m_Titles.size() ? titles : m_Titles;
            m_Rows.push_back(row);
        }
    }
}

void Table::addFacts(const Record& facts, const std::string& heading) {
    if (!heading.empty()) {
        m_Rows.push_back({{heading, STRONG}});
    }
    const bool areNumbers =
        heading.empty() && std::all_of(facts.begin(), facts.end(), [](const Fact& fact) {
            return fact.isNumber() || std::holds_alternative<bool>(fact.value);
        });
    for (const Fact& fact : facts) {
        m_Rows.push_back({{(heading.empty() ? "" : INDENT) + Text::harmless(fact.title)},
                          {Text::harmless(fact.words()), fact.style, areNumbers},
                          {fact.unit}});
    }
}

std::string Table::text(bool hasColours, int limit) const {
    const int room = limit > 0 ? limit : std::numeric_limits<int>::max() / 2; // sums fit, too
    const std::vector<int> columns = widths(room);
    std::vector<Row> rows = m_Rows;
    rows.insert(rows.begin(), m_Titles.empty() ? 0 : 1, m_Titles);
    std::string text;
    for (const Row& row : rows) {
        int left = room;
        int padding = 0; // written only before a further content: no blanks at the end
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string shown = Text::cut(row[i].text, std::min(columns[i], left - padding));
            const int fill = std::max(columns[i] - Text::width(shown), 0);
            padding += row[i].isRight ? fill : 0;
            if (!shown.empty()) {
                const bool isStyled = hasColours && row[i].style != PLAIN;
                text +=
                    blanks(padding) + (isStyled ? STYLES[row[i].style] + shown + STYLE_END : shown);
                left -= padding + Text::width(shown);
                padding = 0;
            }
            padding += columns[i] == 0 ? 0 : GAP + (row[i].isRight ? 0 : fill);
        }
        text += '\n';
    }
    return text;
}

void Table::print() const { Console::print(text(Console::hasColours(), Console::columns())); }

void Table::printList(const std::vector<Record>& records, bool asJson) {
    if (asJson) {
        Console::printDocument(records);
        return;
    }
    Table table;
    table.addList(records);
    table.print();
}

// 0 for a column that has nothing but its title. Of what is too much texts give, the widest first,
// while numbers keep their columns; where that is not enough the end of each line is cut.
std::vector<int> Table::widths(int limit) const {
    std::vector<int> widths;
    std::vector<bool> isText;
    for (const Row& row : m_Rows) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        isText.resize(widths.size(), true);
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], Text::width(row[i].text));
            isText[i] = isText[i] && !row[i].isRight;
        }
    }
    int excess = -GAP - limit;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const int title = i < m_Titles.size() ? Text::width(m_Titles[i].text) : 0;
        widths[i] = widths[i] == 0 ? 0 : std::max(widths[i], title);
        excess += widths[i] == 0 ? 0 : widths[i] + GAP;
    }
    for (int* widest = nullptr; excess > 0; --excess, --*widest) {
        widest = nullptr;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (isText[i] && widths[i] > (widest == nullptr ? SHORTEST_CUT : *widest)) {
                widest = &widths[i];
            }
        }
        if (widest == nullptr) {
            break;
        }
    }
    return widths;
}
