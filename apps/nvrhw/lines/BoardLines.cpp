#include "lines/BoardLines.h"

#include "board/gpio/GPIODevice.h"
#include "platform/Diagnostics.h"
#include "print/Console.h"
#include "print/LogBook.h"

#include <fstream>

namespace {

nvrhw::Board openLines(nvrhw::BoardOptions options) try {
    options.linesOnly = true;
    return nvrhw::Board(options);
} catch (const nvrhw::Error& error) {
    if (error.code() != nvrhw::Error::BadBoard || error.causes().empty()) {
        throw;
    }
    const std::size_t more = error.causes().size() - 1;
    throw CommandError::ofBoard(error.causes().front().text() +
                                (more > 0 ? ", and " + std::to_string(more) + " more" : ""));
}

} // namespace

nvrhw::Board BoardLines::watch(unsigned mailbox) {
    nvrhw::BoardOptions options;
    options.mailbox = mailbox;
    return openLines(options);
}

nvrhw::Board BoardLines::look() {
    LogBook::leaveOut("GPIOError");
    nvrhw::BoardOptions options;
    options.watch = false;
    return openLines(options);
}

int BoardLines::flip(const nvrhw::Input& input) {
    const std::string name = "input " + std::to_string(input.id);
    const GPIODevice device(GlobalEnv::getInstance()->resolve(GPIODevice::PATH));
    if (device.look(input.line.bank).kind == GPIODevice::KERNEL) {
        throw CommandError(name + " is a line of a real GPIO chip: close or open its contact; only "
                                  "simulated ones can be flipped");
    }
    const std::string path = device.pathOf(input.line.bank) + "/" + std::to_string(input.line.bit);
    std::fstream file(path, std::ios::in | std::ios::out); // never empty in between
    int level = 0;
    if (!(file >> level) || (level != 0 && level != 1)) {
        throw CommandError(name + " cannot be flipped while it is unreadable");
    }
    level = 1 - level;
    file.clear(); // it may have been read to its end
    file.seekp(0);
    if (!(file << level << std::flush)) {
        throw CommandError(Cause::fromErrno(path, "cannot be written").text());
    }
    return level;
}
