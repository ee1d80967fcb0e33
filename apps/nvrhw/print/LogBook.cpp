#include "print/LogBook.h"

#include "platform/Diagnostics.h"
#include "print/Console.h"

#include <mutex>
#include <utility>

namespace {

struct Book {
    std::mutex mutex;
    std::vector<std::pair<std::string, std::string>> records; // subject and text
    bool isFollowed = false;
    std::string leftOut; // a subject
};

Book& book() {
    static Book* const instance = new Book; // threads of the library may write until the very end
    return *instance;
}

void warn(const std::string& text) { Console::complain("warning: " + text); }

} // namespace

void LogBook::open() {
    Logger::setSink([](const LogRecord& record) {
        const std::lock_guard<std::mutex> guard(book().mutex);
        if (book().isFollowed) {
            warn(record.text);
        } else if (record.subject != book().leftOut) {
            book().records.emplace_back(record.subject, record.text);
        }
    });
}

std::vector<std::string> LogBook::take() {
    std::vector<std::string> texts;
    const std::lock_guard<std::mutex> guard(book().mutex);
    for (auto& [subject, text] : book().records) {
        texts.push_back(std::move(text));
    }
    book().records.clear();
    return texts;
}

void LogBook::leaveOut(const std::string& subject) {
    const std::lock_guard<std::mutex> guard(book().mutex);
    book().leftOut = subject;
}

std::string LogBook::takeCause(const std::string& fallback) {
    std::string cause;
    for (const std::string& text : take()) {
        cause += (cause.empty() ? "" : "; ") + text;
    }
    return cause.empty() ? fallback : cause;
}

void LogBook::follow() {
    {
        const std::lock_guard<std::mutex> guard(book().mutex);
        book().isFollowed = true; // first, or what comes in between would be told at the end only
    }
    close();
}

void LogBook::close() {
    for (const std::string& text : take()) {
        warn(text);
    }
}
