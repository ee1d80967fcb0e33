#include "platform/FileSystemAbility.h"
#include "platform/HardwareConfigure.h"
#include "platform/MachineInfo.h"
#include "platform/MonitorParam.h"
#include "platform/SoftwarePackage.h"
#include "platform/XmlConfigure.h"
#include "support/CapturedLog.h"
#include "support/TempDir.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

// Each reads a document: true when it is refused and the caller's record left alone.

bool hardware(const std::string& path) {
    GPIOSignalConfigure reader;
    reader.setConfigName("In");
    reader.setConfigFileName(path);
    SafePointer<HardwareConfigItemList> list;
    return reader.getConfig(list) == 0 && list.isNull();
}

bool fileSystems(const std::string& path) {
    std::vector<FileSystemAbility> all(7);
    return FileSystemAbilityConfig::parseFileSystemAbilityConfig(path, all) == 0 && all.size() == 7;
}

bool machine(const std::string& path) {
    MachineInfo info;
    info.setModel("before");
    return SystemInfoParser::parseMachineInfo(path, info) == 0 && info.getModel() == "before";
}

bool package(const std::string& path) {
    SoftwarePackage package;
    package.setName("before");
    return SoftwarePackageParser().parse(path, package) == 0 && package.getName() == "before";
}

bool tool(const std::string& path) {
    XmlConfigureTool document;
    SafePointer<XmlConfigureNode> node;
    return document.open(path, 1, OPEN_MODE_READ) == 0 && document.getConfigNode("a", node) == 0;
}

bool monitors(const std::string& path) {
    const std::string before = TempDir::read(path);
    const bool refused = MonitorParamConfig(1, path).setMonitorParam(MonitorParam()) == 0;
    return refused && TempDir::read(path) == before;
}

/// The reader refuses the file and says why in one record.
void expectRefusal(bool (*refuses)(const std::string&), const std::string& path,
                   const std::string& record) {
    CapturedLog log;
    EXPECT_TRUE(refuses(path)) << record;
    EXPECT_EQ(log.take(), std::vector<std::string>{record});
}

const struct {
    const char* name;
    const char* subject;
    bool (*refuses)(const std::string&);
} READERS[] = {
    {"hardware", "HardwareConfig: ", hardware}, {"fileSystems", "FileSystemAbility: ", fileSystems},
    {"machine", "MachineInfo: ", machine},      {"package", "SoftwarePackage: ", package},
    {"tool", "XmlConfigure: ", tool},           {"monitors", "MonitorParam: ", monitors},
};

TEST(Documents, RefusesTheBadNamingLineAndCause) {
    const TempDir dir;
    int documents = 0;
    for (const auto& reader : READERS) {
        const auto folder = std::string(NVRHW_FIXTURES "/bad/") + reader.name;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            // A copy, since a store could write; its first line, a comment, is the cause.
            const std::string text = TempDir::read(entry.path());
            const std::string path = dir.write("document", text);
            const std::size_t begin = text.find(' ') + 1;
            const std::size_t end = std::min(text.find(" -->"), text.find('\n'));
            expectRefusal(reader.refuses, path,
                          reader.subject + path + ":" + text.substr(begin, end - begin));
            ++documents;
        }
    }
    EXPECT_EQ(documents, 28);
    const std::pair<std::string, const char*> unprintable[] = {
        {"", ":1: No document element found"},
        {"<?xml version='1.0' encoding='latin1'?><H/>", ":1: the encoding is not UTF-8"},
        {std::string("<H>\n\0</H>", 9), ":2: a zero byte: not a text file"},
        {std::string(16 * 1024 * 1024 + 1, ' '), ": larger than 16777216 bytes"},
    };
    for (const auto& [text, cause] : unprintable) {
        const std::string path = dir.write("document", text);
        expectRefusal(hardware, path, "HardwareConfig: " + path + cause);
    }
}

TEST(Documents, RefusesWhatIsNoReadableFile) {
    const TempDir dir;
    const std::string fifo = dir.path("fifo");
    const std::string missing = dir.path("missing");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const auto& reader : READERS) {
        if (reader.refuses == monitors) {
            continue; // a store may be missing
        }
        const std::string subject = reader.subject;
        expectRefusal(reader.refuses, missing, subject + missing + ": No such file or directory");
        expectRefusal(reader.refuses, dir.path(), subject + dir.path() + ": Is a directory");
        expectRefusal(reader.refuses, fifo, subject + fifo + ": not a regular file");
        expectRefusal(reader.refuses, "", subject + "no file name is set");
    }
}

TEST(Documents, TakesTheUsualSpellingsOfIniFiles) {
    const TempDir dir;
    MachineInfo info;
    info.setProductionDate("before");
    dir.write("m.ini",
              "\xEF\xBB\xBF; all\r\n[other]\r\nmodel=no\r\n[machine]\r\n  model = Thirty Two "
              "\r\n  manufacturer=early\r\n# late\r\n\tmanufacturer = Sample = Works ; x\r\n");
    EXPECT_NE(SystemInfoParser::parseMachineInfo(dir.path("m.ini"), info), 0);
    EXPECT_EQ(info.getModel(), "Thirty Two");
    EXPECT_EQ(info.getManufacturer(), "Sample = Works");
    EXPECT_EQ(info.getProductionDate(), "") << "a key that is not there is empty";

    SoftwarePackage software;
    dir.write("p.ini", "[package]\nname=a\n[components]\nb=2\na=1\n\nb.c=\n");
    EXPECT_NE(SoftwarePackageParser().parse(dir.path("p.ini"), software), 0);
    const SoftwarePackage::Components wanted{{"a", "1"}, {"b", "2"}, {"b.c", ""}};
    EXPECT_EQ(software.getName(), "a");
    EXPECT_EQ(software.getComponents(), wanted);
}

} // namespace
