#include "commands/Commands.h"
#include "print/Console.h"
#include "print/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

// Where the program is installed, and in its build tree, the sample lies at the same place
// relative to the program.
fs::path sampleBoard() {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    const fs::path sample = program.parent_path() / NVRHW_SAMPLE_BOARD;
    if (!fs::is_directory(sample)) {
        throw CommandError("the sample board is not installed: no directory " +
                           sample.lexically_normal().string());
    }
    return fs::canonical(sample);
}

void copySample(const fs::path& directory) {
    const fs::path sample = sampleBoard();
    try {
        if (fs::exists(directory) && !fs::is_empty(directory)) {
            throw CommandError(directory.string() + " is not empty; give a new directory");
        }
        fs::create_directories(directory);
        fs::copy(sample, directory, fs::copy_options::recursive);
    } catch (const fs::filesystem_error& error) {
        throw CommandError(directory.string() + ": " + error.code().message());
    }
}

int countFiles(const fs::path& directory) {
    const fs::recursive_directory_iterator entries(directory);
    return static_cast<int>(std::count_if(
        begin(entries), end(entries), [](const auto& entry) { return entry.is_regular_file(); }));
}

int run(const std::string& directory, const Settings& settings) {
    copySample(directory);
    const int files = countFiles(directory);
    if (settings.json) {
        Console::printDocument(Record{{"directory", "", directory}, {"files", "", files}});
        return 0;
    }
    const std::string name = Text::harmless(directory);
    Console::print("Wrote a sample board of " + std::to_string(files) + " files to " + name +
                   ".\nLook at its inputs:  nvrhw --board " + name + " inputs\n" +
                   "Send input 1 to alarm:  echo 1 > " + name + "/dev/gpiodrv/0/0\n");
    return 0;
}

} // namespace

void addBoard(Commands& commands) {
    const auto directory = std::make_shared<std::string>();
    CLI::App& app =
        commands.add("board", "Write a sample board to start from",
                     [directory](const Settings& settings) { return run(*directory, settings); });
    app.require_subcommand(1);
    commands.addBelow(app, "init", "Write the sample board into an empty directory")
        .add_option("DIR", *directory, "The directory; it is made when there is none")
        ->required()
        ->type_name("");
}
