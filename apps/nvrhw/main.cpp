// nvrhw: what a board has, what its lines do, and why its configuration would fail.

#include "commands/Commands.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <csignal>
#include <exception>

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // writing then fails, which ends the program quietly
    Console::open();
    try {
        const int status = Commands().run(argc, argv);
        LogBook::close();
        return status;
    } catch (const ReaderGone&) {
        return 0;
    } catch (const std::exception& error) {
        LogBook::close();
        Console::complain(error.what());
        return 1;
    }
}
