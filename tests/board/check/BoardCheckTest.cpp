#include "board/check/BoardCheck.h"

#include "board/documents/schema/AbilitySchema.h"
#include "board/documents/schema/FileSystemSchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/documents/schema/MachineSchema.h"
#include "board/documents/schema/MonitorSchema.h"
#include "board/documents/schema/PackageSchema.h"
#include "config/ConfigFileNameConst.h"
#include "config/Monitor.h"
#include "platform/Insight.h"
#include "support/LogCapture.h"
#include "support/SimulatedBoard.h"

#include <regex>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// The sample board, owned by somebody who may no more than its permissions say.
class BoardCheckTest : public testing::Test {
protected:
    BoardCheckTest() {
        fs::remove_all(m_Board.root() / "dev");
        fs::copy(NVRHW_SAMPLE_BOARD, m_Board.root(), fs::copy_options::recursive);
        EXPECT_EQ(chown(m_Board.root().c_str(), m_Owner, -1), 0);
        for (const auto& entry : fs::recursive_directory_iterator(m_Board.root())) {
            EXPECT_EQ(chown(entry.path().c_str(), m_Owner, -1), 0);
        }
    }

    /// The findings, without the board's root, while a folder has these permissions.
    std::string findingsWith(const std::string& folder, int permissions) const {
        const std::string root = m_Board.root().string() + "/";
        std::string findings;
        fs::permissions(root + folder, fs::perms(permissions));
        EXPECT_EQ(seteuid(m_Owner), 0);
        for (const Finding& finding : BoardCheck::run()) {
            findings += finding.text() + "\n";
        }
        EXPECT_EQ(seteuid(m_User), 0);
        fs::permissions(root + folder, fs::perms(0755));
        return std::regex_replace(findings, std::regex(root), "");
    }

    SimulatedBoard m_Board;
    const uid_t m_User = geteuid();
    const uid_t m_Owner = m_User == 0 ? 65534 : m_User;
};

TEST_F(BoardCheckTest, TellsOnceOfEachFolderThatMayNotBeUsed) {
    const std::string hardware = "hd1/program/config/hardwareConfig.xml";
    const std::string monitors = "mnt/mtd/code/config_file";
    const std::string notEntered = "the directory may not be entered: Permission denied";
    EXPECT_EQ(findingsWith("dev/gpiodrv/2", 0755), "");
    EXPECT_EQ(findingsWith("dev/gpiodrv/2", 0644),
              hardware + ":29: error: GPIOAlarmOut: item: dev/gpiodrv/2: " + notEntered +
                  " (lines 29, 30, 31 and 32)\n");
    EXPECT_EQ(findingsWith("dev/gpiodrv", 0644),
              "dev/gpiodrv: error: GPIO device: " + notEntered + "\n");
    EXPECT_EQ(findingsWith(monitors, 0555),
              monitors + "/MonitorParamConfig.xml: warning: monitor parameters: cannot be changed: "
                         "its folder: Permission denied\n");
}

TEST_F(BoardCheckTest, ALineThatCannotBeHadIsNoErrorOfADocument) {
    LogCapture log;
    const auto expectErrors = [](std::size_t ofLines, std::size_t others) {
        const std::vector<Cause> lines = Insight::findDocumentErrors(true);
        EXPECT_EQ(lines.size(), ofLines);
        EXPECT_EQ(Insight::findDocumentErrors(false).size(), ofLines + others);
        return lines.empty() ? "" : lines.front().text();
    };
    fs::remove(m_Board.line(0, 1));
    fs::remove_all(m_Board.bank(2));
    expectErrors(0, 0);
    m_Board.writeFile(AbilitySchema::DOCUMENT.path, "");
    expectErrors(0, 1);
    fs::remove_all(m_Board.device());
    EXPECT_EQ(expectErrors(1, 1),
              m_Board.device().string() + ": GPIO device: No such file or directory");
    EXPECT_EQ(log.take(), "") << "who asks shows them";
}

TEST_F(BoardCheckTest, LooksWhereTheLibraryLooks) {
    using Files = ConfigFileNameConst;
    EXPECT_EQ(HardwareSchema::DOCUMENT.path, Files::getHardwareConfigFileName());
    EXPECT_EQ(AbilitySchema::DOCUMENT.path, Files::getNVRAbilityFileName());
    EXPECT_EQ(FileSystemSchema::DOCUMENT.path, Files::getFileSystemFileName());
    EXPECT_EQ(MachineSchema::DOCUMENT.path, Files::getMachineInfoFileName());
    EXPECT_EQ(PackageSchema::DOCUMENT.path, Files::getSoftwarePackageFileName());
    const std::string monitors = m_Board.root().string() + MonitorSchema::DOCUMENT.path;
    fs::remove(monitors);
    EXPECT_NE(Monitor().setMonitorParam(MonitorParam()), 0);
    EXPECT_TRUE(fs::exists(monitors));
}

} // namespace
