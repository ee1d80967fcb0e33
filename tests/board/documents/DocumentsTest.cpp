#include "platform/FileSystemAbility.h"
#include "platform/HardwareConfigure.h"
#include "platform/MachineInfo.h"
#include "platform/MonitorParam.h"
#include "platform/SoftwarePackage.h"
#include "platform/SystemTime.h"
#include "platform/XmlConfigure.h"
#include "support/DocumentTest.h"

#include <functional>
#include <regex>
#include <sys/stat.h>

namespace {

class Documents : public DocumentTest {
protected:
    ~Documents() noexcept override = default;

    /// The reader refuses the file and says why in one record.
    void expectRefusal(const std::string& subject, const std::string& file,
                       const std::string& cause) {
        EXPECT_EQ(m_Readers.at(subject)(file), 0) << file << cause;
        expectRecord(subject + ": " + (file.empty() ? "" : real(file)) + cause);
    }

    GPIOSignalConfigure m_Lines;
    SafePointer<HardwareConfigItemList> m_List;
    std::vector<FileSystemAbility> m_Systems{7};
    MachineInfo m_Info;
    SoftwarePackage m_Package;
    SystemTime m_Clock;

    /// By the subjects of their log records.
    const std::map<std::string, std::function<int(const std::string&)>> m_Readers{
        {"HardwareConfig",
         [this](auto& f) {
             m_Lines.setConfigName("In");
             m_Lines.setConfigFileName(f);
             return m_Lines.getConfig(m_List);
         }},
        {"FileSystemAbility",
         [this](auto& f) {
             return FileSystemAbilityConfig::parseFileSystemAbilityConfig(f, m_Systems);
         }},
        {"MachineInfo", [this](auto& f) { return SystemInfoParser::parseMachineInfo(f, m_Info); }},
        {"SoftwarePackage",
         [this](auto& f) { return SoftwarePackageParser().parse(f, m_Package); }},
        {"XmlConfigure", [](auto& f) { return XmlConfigureTool().open(f, 1, OPEN_MODE_READ); }},
        {"MonitorParam", [](auto& f) { return MonitorParamConfig(1, f).setMonitorParam({}); }},
        {"SystemTime", [this](auto& f) { return (m_Clock.m_ConfigFileName = f, m_Clock.init()); }},
    };
};

TEST_F(Documents, RefusesTheBadNamingLineAndCause) {
    for (const auto& reader : m_Readers) {
        std::istringstream cases(read("/bad/" + reader.first + ".txt"));
        for (std::string line; std::getline(cases, line);) { // "DOCUMENT => LINE: CAUSE"
            const std::size_t end = line.find(" => ");
            const std::string text =
                std::regex_replace(line.substr(0, end), std::regex("\\\\n"), "\n");
            write("/document", text);
            expectRefusal(reader.first, "/document", ":" + line.substr(end + 4));
            EXPECT_EQ(read("/document"), text);
        }
    }
    const std::pair<std::string, const char*> unprintable[] = {
        {"", ":1: No document element found"},
        {"<?xml version='1.0' encoding='latin1'?><H/>", ":1: the encoding is not UTF-8"},
        {std::string("<H>\n\0</H>", 9), ":2: a zero byte: not a text file"},
        {std::string(16 * 1024 * 1024 + 1, ' '), ": larger than 16777216 bytes"},
    };
    for (const auto& [text, cause] : unprintable) {
        write("/document", text);
        expectRefusal("HardwareConfig", "/document", cause);
    }
    EXPECT_TRUE(m_List.isNull()) << "the caller's records are left alone";
    EXPECT_EQ(m_Systems.size(), 7U);
    EXPECT_EQ(m_Info.getModel() + m_Package.getName(), "");
}

TEST_F(Documents, RefusesWhatIsNoReadableFile) {
    ASSERT_EQ(mkfifo(real("/fifo").c_str(), 0600), 0);
    for (const auto& reader : m_Readers) {
        if (reader.first != "MonitorParam" && reader.first != "SystemTime") { // may be missing
            expectRefusal(reader.first, "/missing", ": No such file or directory");
        }
        expectRefusal(reader.first, "/bad", ": Is a directory");
        expectRefusal(reader.first, "/fifo", ": not a regular file");
        expectRefusal(reader.first, "", "no file name is set");
    }
}

TEST_F(Documents, TakesTheUsualSpellingsOfIniFiles) {
    write("/usual.ini",
          "\xEF\xBB\xBF; all\r\n[other]\r\nmodel=no\r\n[machine]\r\n  model = Thirty Two \r\n"
          "  manufacturer=early\r\n# late\r\n\tmanufacturer = Sample = Works ; x\r\n"
          "[package]\nname=a\n[components]\nb=2\na=1\n\nb.c=\n");
    m_Info.setProductionDate("before");
    EXPECT_NE(m_Readers.at("MachineInfo")("/usual.ini"), 0);
    EXPECT_EQ(m_Info.getModel(), "Thirty Two");
    EXPECT_EQ(m_Info.getManufacturer(), "Sample = Works");
    EXPECT_EQ(m_Info.getProductionDate(), "") << "a key that is not there is empty";
    EXPECT_NE(m_Readers.at("SoftwarePackage")("/usual.ini"), 0);
    const SoftwarePackage::Components wanted{{"a", "1"}, {"b", "2"}, {"b.c", ""}};
    EXPECT_EQ(m_Package.getName(), "a");
    EXPECT_EQ(m_Package.getComponents(), wanted);
}

TEST_F(Documents, ToolFindsElementsInOrderAndTakesWholeValues) {
    SafePointer<XmlConfigureNode> node;
    std::vector<SafePointer<XmlConfigureNode>> nodes(1);
    std::vector<SafePointer<XmlConfigureItem>> items;
    XmlConfigureTool tool;
    ASSERT_NE(tool.open("/any.xml", 1, OPEN_MODE_READ), 0);
    EXPECT_EQ(tool.getConfigNode("absent", node), 0);
    expectRecord("XmlConfigure: " + real("/any.xml:3: any has no element absent"));
    EXPECT_EQ(tool.getConfigNode("DispatchAbility", node) + tool.getConfigNode("WebAbility", node),
              0);
    EXPECT_EQ(m_Log.take(), "") << "abilities may be without these";
    EXPECT_TRUE(node.isNull());
    ASSERT_NE(tool.getConfigNode("a", node), 0);
    EXPECT_EQ(node->getConfigNode("WebAbility", node), 0);
    expectRecord("XmlConfigure: " + real("/any.xml:4: a has no element WebAbility"));
    ASSERT_NE(tool.getConfigNodeList("a", nodes), 0);
    ASSERT_NE(node->getItemList(items), 0);
    EXPECT_EQ(tool.open("/any.xml", 2, OPEN_MODE_READ), 0);
    m_Log.expectOne({"any.xml: only layout 1 can be opened"});
    ASSERT_EQ(nodes.size(), 2U) << "what was found outlives the tool's document";
    ASSERT_EQ(items.size(), 2U);

    int number = 0;
    bool flag = true;
    std::string text;
    EXPECT_NE(node->getProperty("least", number), 0);
    EXPECT_NE(items[1]->getProperty("k", text), 0);
    const std::string place = "XmlConfigure: " + real("/any.xml:5: a: attribute ");
    EXPECT_EQ(nodes[1]->getProperty("n", number), 0);
    expectRecord(place + "n must be a whole number from -2147483648 to 2147483647, not \"x\"");
    EXPECT_EQ(nodes[1]->getProperty("n", flag), 0);
    expectRecord(place + "n must be true, false, 1 or 0, not \"x\"");
    EXPECT_EQ(nodes[1]->getProperty("twice", text), 0);
    expectRecord(place + "twice stands twice");
    EXPECT_EQ(node->getProperty("absent", number) + node->getProperty("absent", text), 0);
    EXPECT_EQ(std::to_string(number) + std::to_string(flag) + text, "-21474836481\xC3\xA9");

    EXPECT_NE(node->getConfigNode("other", node), 0) << "a node may be replaced by its child";
    EXPECT_NE(node->getItemList(items), 0);
    EXPECT_TRUE(items.empty());
}

TEST_F(Documents, TheClocksFileIsAlsoTakenFromBesideTheHardwareConfiguration) {
    const std::string asked = "../config/RTCDriverConfig.xml"; // from where the test is started
    const std::string other = "/hd1/program/config/RTCDriverConfig.xml";
    const std::string prefix = "SystemTime: " + asked + ": no such file";
    const auto& init = m_Readers.at("SystemTime");
    EXPECT_NE(init(asked), 0);
    expectRecord(prefix + ", nor " + real(other) + ": /dev/rtc0 in UTC is taken");
    std::filesystem::create_directories(real("/hd1/program/config"));
    write(other, "<Device path='/dev/rtc7'/>");
    EXPECT_NE(init(asked), 0);
    expectRecord(prefix + ": " + real(other) + " is taken");
    DateTime time;
    EXPECT_EQ(m_Clock.getHardwareTime(time), 0);
    m_Log.expectOne({real("/dev/rtc7")});
}

} // namespace
