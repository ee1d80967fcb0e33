#include "print/LogBook.h"

#include "platform/Diagnostics.h"
#include "print/Console.h"

#include <mutex>

namespace {

struct Book {
    std::mutex mutex;
    std::vector<std::string> texts;
    bool isFollowed = false;
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
        } else {
            book().texts.emplace_back(record.text);
        }
    });
}

std::vector<std::string> LogBook::take() {
    std::vector<std::string> texts;
    const std::lock_guard<std::mutex> guard(book().mutex);
    texts.swap(book().texts);
    return texts;
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
