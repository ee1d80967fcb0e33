#pragma once

#include <functional>
#include <string>

/// A question in one row, and the answer as far as it is typed.
class PanelPrompt {
public:
    /// Takes the answer; raises CommandError when it is not one.
    using Accept = std::function<void(const std::string&)>;

    bool isOpen() const { return m_Accept != nullptr; }
    void open(const std::string& question, const Accept& accept);

    /// Takes a key while the question is open. Raises CommandError for a wrong answer, which can
    /// then be mended.
    void press(int key);

    const std::string& question() const { return m_Question; }
    const std::string& answer() const { return m_Answer; }

private:
    std::string m_Question;
    std::string m_Answer;
    Accept m_Accept;
};
