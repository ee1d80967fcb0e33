#include "BenchBoard.h"

#include "config/ConfigFileNameConst.h"
#include "platform/Diagnostics.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

std::string item(int id, const IOInfo& line) {
    return "<item id=\"" + std::to_string(id) + "\" group=\"" + std::to_string(line.getGroupId()) +
           "\" bitPosition=\"" + std::to_string(line.getBitPosion()) + "\" validLevel=\"1\"/>\n";
}

} // namespace

BenchBoard::BenchBoard(int inputs, int outputs) {
    std::string name = (fs::temp_directory_path() / "nvrhw-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    m_Root = name;
    fs::copy(NVRHW_SAMPLE_BOARD, m_Root, fs::copy_options::recursive);
    fs::remove_all(m_Root + "/dev/gpiodrv");
    const int firstOutput = (inputs + BANK_LINES - 1) / BANK_LINES * BANK_LINES + 1;
    std::string in;
    std::string out;
    for (int id = 1; id <= inputs; ++id) {
        in += item(id, lineOf(id));
        writeFile(fileOf(id).substr(m_Root.size()), "0\n");
    }
    for (int id = 1; id <= outputs; ++id) {
        out += item(id, lineOf(firstOutput + id - 1));
        writeFile(fileOf(firstOutput + id - 1).substr(m_Root.size()), "0\n");
    }
    writeFile(ConfigFileNameConst::getHardwareConfigFileName(),
              "<Board><GPIOAlarmIn>\n" + in + "</GPIOAlarmIn><GPIOAlarmOut>\n" + out +
                  "</GPIOAlarmOut></Board>\n");
    GlobalEnv::getInstance()->setRootDirectory(m_Root);
}

BenchBoard::~BenchBoard() {
    GlobalEnv::getInstance()->setRootDirectory("/");
    std::error_code ignored;
    fs::remove_all(m_Root, ignored);
}

IOInfo BenchBoard::lineOf(int input) {
    IOInfo line;
    line.setId(input);
    line.setGroupId((input - 1) / BANK_LINES);
    line.setBitPosion((input - 1) % BANK_LINES);
    return line;
}

std::string BenchBoard::fileOf(int input) const {
    const IOInfo line = lineOf(input);
    return m_Root + "/dev/gpiodrv/" + std::to_string(line.getGroupId()) + "/" +
           std::to_string(line.getBitPosion());
}

void BenchBoard::writeFile(const std::string& path, const std::string& text) const {
    const fs::path real = m_Root + path;
    fs::create_directories(real.parent_path());
    if (!(std::ofstream(real) << text)) {
        throw std::runtime_error("cannot write " + real.string());
    }
}
