#include "commands/Commands.h"
#include "commands/NewBoard.h"
#include "print/Console.h"
#include "print/Text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

struct Wish {
    std::string directory{};
    CLI::App* fresh = nullptr; // what asks for a board of one's own
    NewBoard board{};
};

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

void write(const Wish& wish) {
    const fs::path directory = wish.directory;
    const bool isFresh = wish.fresh->parsed();
    const fs::path sample = isFresh ? fs::path() : sampleBoard();
    try {
        if (fs::exists(directory) && !fs::is_empty(directory)) {
            throw CommandError(directory.string() + " is not empty; give a new directory");
        }
        fs::create_directories(directory);
        if (isFresh) {
            wish.board.write(directory.string());
        } else {
            fs::copy(sample, directory, fs::copy_options::recursive);
        }
    } catch (const fs::filesystem_error& error) {
        throw CommandError(directory.string() + ": " + error.code().message());
    }
}

int countFiles(const fs::path& directory) {
    const fs::recursive_directory_iterator entries(directory);
    return static_cast<int>(std::count_if(
        begin(entries), end(entries), [](const auto& entry) { return entry.is_regular_file(); }));
}

int run(const Wish& wish, const Settings& settings) {
    const NewBoard& board = wish.board;
    if (board.inputs + board.outputs > board.banks * NewBoard::MOST_LINES) {
        throw CLI::ValidationError("--banks", std::to_string(board.inputs + board.outputs) +
                                                  " lines do not fit into so few: a bank has at "
                                                  "most " +
                                                  std::to_string(NewBoard::MOST_LINES));
    }
    write(wish);
    const int files = countFiles(wish.directory);
    if (settings.json) {
        Console::printDocument(Record{{"directory", "", wish.directory}, {"files", "", files}});
        return 0;
    }
    const std::string name = Text::harmless(wish.directory);
    const std::string asked = "nvrhw --board " + name;
    Console::print(std::string("Wrote a ") + (wish.fresh->parsed() ? "" : "sample ") + "board of " +
                   std::to_string(files) + " files to " + name + ".\nLook at its inputs:         " +
                   asked + " inputs\nFlip the line of an input:  " + asked + " flip 1\n");
    return 0;
}

void addNumber(CLI::App& app, const char* name, int& number, int lowest, int highest,
               const std::string& description) {
    const std::string range = std::to_string(lowest) + " to " + std::to_string(highest);
    const std::string usual = " (default " + std::to_string(number) + ")";
    app.add_option(name, number, description + ", " + range + usual)
        ->check(CLI::Range(lowest, highest).description(""))
        ->type_name("N");
}

} // namespace

void addBoard(Commands& commands) {
    const auto wish = std::make_shared<Wish>();
    NewBoard& board = wish->board;
    CLI::App& app = commands.add("board", "Write a board to start from",
                                 [wish](const Settings& settings) { return run(*wish, settings); });
    app.require_subcommand(1);
    CLI::App& sample = commands.addBelow(app, "init", "Write the sample board into a directory");
    CLI::App& fresh = commands.addBelow(app, "new", "Write a board of one's own into a directory");
    wish->fresh = &fresh;
    for (CLI::App* each : {&sample, &fresh}) {
        each->add_option("DIR", wish->directory, "The directory; it does not exist or is empty")
            ->required()
            ->type_name("");
    }
    constexpr int MOST = NewBoard::MOST_BANKS * NewBoard::MOST_LINES;
    addNumber(fresh, "--inputs", board.inputs, 0, MOST, "Alarm inputs, with ids from 1");
    addNumber(fresh, "--outputs", board.outputs, 0, MOST, "Alarm outputs, with ids from 1");
    addNumber(fresh, "--banks", board.banks, 1, NewBoard::MOST_BANKS, "Simulated banks");
    addNumber(fresh, "--monitors", board.monitors, 0, NewBoard::MOST_MONITORS, "Display outputs");
}
