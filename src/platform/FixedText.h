#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

/// A short text inside a record, so that the record holds nothing on the heap and is copied byte
/// for byte. A text of CAPACITY bytes or more is cut, never in the middle of a UTF-8 character.
template <std::size_t CAPACITY> class FixedText {
public:
    /// Zero-terminated; empty before the first set().
    const char* get() const { return m_Text; }

    /// Copies the zero-terminated text; null counts as empty.
    void set(const char* text) {
        const std::size_t length = text == nullptr ? 0 : fittingLength(text);
        if (length > 0) {
            std::memmove(m_Text, text, length);
        }
        std::fill(m_Text + length, m_Text + CAPACITY, '\0');
    }

private:
    static std::size_t fittingLength(const char* text) {
        const std::size_t whole = strnlen(text, CAPACITY);
        if (whole < CAPACITY) {
            return whole;
        }
        for (std::size_t length = CAPACITY - 1; length + 4 >= CAPACITY; --length) {
            if ((static_cast<unsigned char>(text[length]) & 0xC0) != 0x80) {
                return length; // the first byte left out begins a character
            }
        }
        return CAPACITY - 1; // not UTF-8
    }

    static_assert(CAPACITY > 4, "one character must fit");

    char m_Text[CAPACITY] = {};
};
