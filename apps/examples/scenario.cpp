// A few seconds in the life of a recorder on a simulated board: contacts open and close, a line is
// torn off and repaired, outputs are switched, and each effect is looked for.
//
//     scenario BOARD       a directory, whose lines are files; status 0 when all of it happened
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <mutex>
#include <nvrhw/nvrhw.h>
#include <sstream>

using namespace std::chrono_literals;

/// Prints what the board tells, and remembers it for whoever waits for it.
class Journal {
public:
    template <typename Change> void add(const Change& change) {
        std::ostringstream text;
        text << change; // "14:03:07.412 input 1 (front door) alarm"
        std::cout << "told: " << text.str() << std::endl;
        const std::lock_guard<std::mutex> guard(m_Mutex);
        m_Text += text.str() + '\n';
        m_Added.notify_all();
    }

    /// Waits until something with this text was told, and forgets what has been told up to now.
    bool waitFor(const std::string& text) {
        std::unique_lock<std::mutex> lock(m_Mutex);
        const bool isTold = m_Added.wait_for(
            lock, 5s, [&] { return m_Text.find(' ' + text) != std::string::npos; });
        m_Text.clear();
        return isTold;
    }

private:
    std::mutex m_Mutex;
    std::condition_variable m_Added;
    std::string m_Text;
};

class Scenario {
public:
    explicit Scenario(const nvrhw::Board& board)
        : m_Board(board),
          m_Inputs(board.onInput([this](const auto& told) { m_Journal.add(told); })),
          m_Outputs(board.onOutput([this](const auto& told) { m_Journal.add(told); })) {}

    bool play() {
        expect("input 16 normal");
        for (const int id : {1, 10}) { // one is in alarm at 1, the other at 0
            setInput(id, true);
            setInput(id, false);
        }
        const std::filesystem::path line = fileOf(m_Board.input(4).line);
        std::cout << "wire: rm " << line.string() << std::endl;
        std::filesystem::remove(line);
        expect("input 4 unreadable");
        setInput(4, true); // repaired, and in alarm at once

        const nvrhw::Output held = m_Board.output(1), siren = m_Board.output("siren");
        check(bool(held.hold(400ms)), "output 1 can be driven");
        expect("output 1 hold ended");
        siren.flash(400ms, 1s);
        expect("output 4 (siren) flash ended");
        siren.hold();
        check(siren.state().isActive && siren.state().agrees, "the siren is on");
        siren.rest();
        expect("output 4 (siren) hold ended");
        for (const nvrhw::Output& output : m_Board.outputs()) {
            check(!output.state().isActive, "at rest: output " + std::to_string(output.id));
        }
        return m_IsGood;
    }

private:
    std::string fileOf(const nvrhw::Line& line) const {
        return m_Board.directory() + "/dev/gpiodrv/" + std::to_string(line.bank) + '/' +
               std::to_string(line.bit);
    }

    void setInput(int id, bool toAlarm) {
        const nvrhw::Line line = m_Board.input(id).line;
        const int level = toAlarm ? line.validLevel : 1 - line.validLevel;
        std::cout << "wire: echo " << level << " > " << fileOf(line) << std::endl;
        std::ofstream(fileOf(line)) << level;
        const std::string_view name = m_Board.input(id).name;
        expect("input " + std::to_string(id) +
               (name.empty() ? "" : " (" + std::string(name) + ")") +
               (toAlarm ? " alarm" : " normal"));
    }

    void expect(const std::string& text) { check(m_Journal.waitFor(text), text); }

    void check(bool isTrue, const std::string& what) {
        m_IsGood = m_IsGood && isTrue;
        if (!isTrue) {
            std::cout << "FAILED: " << what << std::endl;
        }
    }

    const nvrhw::Board& m_Board;
    Journal m_Journal;
    bool m_IsGood = true;
    nvrhw::Registration m_Inputs, m_Outputs; // end first
};

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: scenario BOARD\n";
        return 2;
    }
    const nvrhw::Board board(argv[1]);
    std::cout << board.machine().getModel() << ": " << board.inputs().size() << " inputs, "
              << board.outputs().size() << " outputs, " << board.abilities().getMaxChannelNumber()
              << " channels, " << board.monitors().size() << " monitors" << std::endl;
    const bool isGood = Scenario(board).play();
    std::cout << (isGood ? "all of it happened" : "something did not happen") << std::endl;
    return isGood ? 0 : 1;
} catch (const nvrhw::Error& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
