#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// How a text stands out where there are colours.
enum Style { PLAIN, STRONG, FAINT, GOOD, BAD, DOUBTFUL, BUSY };

struct Fact;

/// The facts about one thing, in the order in which they are shown.
using Record = std::vector<Fact>;

/// What a fact says; std::monostate: nothing is known.
using Value = std::variant<std::monostate, bool, int, std::int64_t, double, std::string,
                           std::vector<int>, Record, std::vector<Record>>;

/// A fact, described once for everybody: tables, JSON and the panel walk these. One with neither a
/// title nor a joint is for programs, one without a key for people only.
struct Fact {
    std::string key;   ///< in JSON
    std::string title; ///< of its column or row
    Value value;
    std::string text{}; ///< for people, where the value as it is would not do
    Style style = PLAIN;
    std::string unit{};
    std::string joint{}; ///< it continues the column before it, after these characters

    /// How it is shown where there is little room.
    struct Narrow {
        std::string title{};
        int rank = -1;      ///< the highest goes first when room lacks; below 0: is not shown there
        int width = 0;      ///< cells it always takes; 0: as many as its texts need
        std::string mark{}; ///< before the text
    } narrow{};

    Fact says(const std::string& words, Style look = PLAIN) const {
        Fact fact = *this;
        fact.text = words;
        fact.style = look;
        return fact;
    }
    Fact in(const std::string& name) const {
        Fact fact = *this;
        fact.unit = name;
        return fact;
    }
    Fact after(const std::string& characters) const {
        Fact fact = *this;
        fact.joint = characters;
        return fact;
    }
    Fact where(const Narrow& shown) const {
        Fact fact = *this;
        fact.narrow = shown;
        return fact;
    }

    /// For people: the text, or the value in words, "-" when nothing is known.
    std::string words() const;

    bool isNumber() const { return value.index() == 0 || (value.index() > 1 && value.index() < 5); }
};

/// What `describe` says of each.
template <typename T>
std::vector<Record> describeAll(const std::vector<T>& list, Record (*describe)(const T&)) {
    std::vector<Record> records;
    records.reserve(list.size());
    for (const T& entry : list) {
        records.push_back(describe(entry));
    }
    return records;
}

/// A value as JSON, an object for a record; in lines indented by `indent`, or in one when it is
/// below 0. What is not UTF-8 is replaced.
std::string jsonText(const Value& value, int indent);
