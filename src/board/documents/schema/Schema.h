#pragma once

#include <cstddef>
#include <limits>
#include <string_view>

// What a document may hold, as data: each fact about a document stands once, in the schema of this
// folder that is named after the document. The readers of src/board/documents convert by it, `nvrhw
// check` compares a board with it, and the tables of docs/configuration.md are written from it.

/// A view of a constant array.
template <typename Row> class Rows {
public:
    constexpr Rows() = default;
    template <std::size_t N>
    constexpr Rows(const Row (&rows)[N]) : m_Begin(rows), m_Size(N) {} // as an array stands for it

    constexpr const Row* begin() const { return m_Begin; }
    constexpr const Row* end() const { return m_Begin + m_Size; }
    constexpr std::size_t size() const { return m_Size; }

private:
    const Row* m_Begin = nullptr;
    std::size_t m_Size = 0;
};

/// The values a number may have, both ends included.
struct Range {
    int lowest = std::numeric_limits<int>::min();
    int highest = std::numeric_limits<int>::max();

    constexpr bool has(int value) const { return value >= lowest && value <= highest; }
};

constexpr Range ANY{};
constexpr Range NOT_NEGATIVE{0, ANY.highest};
constexpr Range POSITIVE{1, ANY.highest};

/// The row with another value.
template <typename Row, typename Value>
constexpr Row changed(Row row, Value Row::*member, Value value) {
    row.*member = value;
    return row;
}

/// An attribute of an element, or a key of an ini section.
struct FieldSchema {
    /// A CHOICE is one of some texts; its value is the place of the text from 1, and 0 without one.
    enum Kind { NUMBER, FLAG, TEXT, CHOICE };

    /// Without a REQUIRED one the document, or its section, fails; an EXPECTED one has a default
    /// that hardly anybody wants.
    enum Presence { OPTIONAL, EXPECTED, REQUIRED };

    const char* name;
    const char* meaning;
    const char* absentText = nullptr; ///< in words, where the value says too little
    const char* doubt = nullptr;      ///< what only a check has to say wherever it stands
    Rows<const char*> choices{};      ///< of a CHOICE
    Kind kind = TEXT;
    Presence presence = OPTIONAL;
    Range accepted{}; ///< of a number; the readers refuse others
    Range likely{};   ///< of a number, or of the bytes of a text; others are almost surely mistakes
    int absent = 0;   ///< the value of a number or flag that is not there
    bool isKey = false; ///< the numbers of all keys together stand once among siblings

    static constexpr FieldSchema number(const char* name, const char* meaning) {
        return of(NUMBER, name, meaning);
    }
    /// How many there are of something.
    static constexpr FieldSchema count(const char* name, const char* meaning) {
        return number(name, meaning).expected().mostly(NOT_NEGATIVE);
    }
    static constexpr FieldSchema flag(const char* name, const char* meaning) {
        return of(FLAG, name, meaning);
    }
    static constexpr FieldSchema text(const char* name, const char* meaning) {
        return of(TEXT, name, meaning);
    }
    static constexpr FieldSchema choice(const char* name, const char* meaning,
                                        Rows<const char*> choices) {
        FieldSchema field = of(CHOICE, name, meaning);
        field.choices = choices;
        return field;
    }

    constexpr FieldSchema required() const {
        return changed(*this, &FieldSchema::presence, REQUIRED);
    }
    constexpr FieldSchema expected() const {
        return changed(*this, &FieldSchema::presence, EXPECTED);
    }
    constexpr FieldSchema from(Range range) const {
        return changed(*this, &FieldSchema::accepted, range);
    }
    constexpr FieldSchema otherwise(const char* text) const {
        return changed(*this, &FieldSchema::absentText, text);
    }
    constexpr FieldSchema otherwise(int value) const {
        return changed(*this, &FieldSchema::absent, value);
    }
    constexpr FieldSchema mostly(Range range) const {
        return changed(*this, &FieldSchema::likely, range);
    }
    constexpr FieldSchema key() const { return changed(*this, &FieldSchema::isKey, true); }
    constexpr FieldSchema doubted(const char* text) const {
        return changed(*this, &FieldSchema::doubt, text);
    }

private:
    static constexpr FieldSchema of(Kind kind, const char* name, const char* meaning) {
        FieldSchema field{name, meaning};
        field.kind = kind;
        return field;
    }
};

/// An element, or a section of an ini file.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): rows are written in this order
struct ElementSchema {
    /// Without a SINGLE or a REQUIRED one the document fails, as with a second SINGLE one. Of the
    /// others but ANY_NUMBER the reader takes the first and never looks at another.
    enum Occurrence { ANY_NUMBER, OPTIONAL, REQUIRED, SINGLE };

    const char* name;
    Occurrence occurrence;
    const char* meaning; ///< empty when its fields say it all
    Rows<FieldSchema> fields{};
    Rows<ElementSchema> children{};
    const char* absentText = ""; ///< what follows when an OPTIONAL one is not there
    bool isStrict = false;       ///< the reader refuses unknown elements in it
    bool takesAnyField = false;  ///< the names of its fields are free

    /// The child of this name; null when there is none.
    constexpr const ElementSchema* child(std::string_view wanted) const {
        for (const ElementSchema& known : children) {
            if (known.name == wanted) {
                return &known;
            }
        }
        return nullptr;
    }
};

/// A file.
struct DocumentSchema {
    const char* title; ///< what findings call it
    const char* path;  ///< of the board, by default
    const char* meaning;
    const char* whenMissing; ///< what follows without the file
    bool mayBeMissing;       ///< and that is no error
    const char* whenBad;     ///< what follows when a REQUIRED part is missing
    ElementSchema root;
    bool mayStandAlone = false;      ///< the root's one child may be the root itself
    const char* askedPath = nullptr; ///< where a recorder looks first, from its working directory
};
