#include "ability/DeviceAbilityCollector.h"
#include "ability/NVRAbilityConfigure.h"
#include "platform/Diagnostics.h"
#include "support/CapturedLog.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <sstream>

namespace {

constexpr char DOCUMENT[] = NVRHW_FIXTURES "/NVRAbility.xml";

std::ostream& operator<<(std::ostream& out, const MonitorResolution& resolution) {
    return out << resolution.getInputType() << "/" << resolution.getResolutionId() << " "
               << resolution.getResolutionName() << " " << resolution.getWidth() << "x"
               << resolution.getHeight();
}

std::ostream& operator<<(std::ostream& out, const LayoutModel& layout) {
    return out << layout.getModelId() << ":" << layout.getPicNumber();
}

std::ostream& operator<<(std::ostream& out, const NetWorkingMode& mode) {
    return out << mode.getWorkingType() << mode.getWorkingName() << mode.getSupportIpConfigFlag()
               << mode.getSupportDHCPServerFlag() << mode.getSupportDHCPClientFlag()
               << mode.getSupportDNSConfigFlag() << mode.getSupportPOEConfigFlag();
}

template <typename Record>
std::ostream& operator<<(std::ostream& out, const std::vector<Record>& list);

std::ostream& operator<<(std::ostream& out, const MonitorAbility& monitor) {
    return out << monitor.getMonitorId() << monitor.getMonitorResolutionList();
}

std::ostream& operator<<(std::ostream& out, const SubWinDecodingAbility& group) {
    const VideoResolution& video = group.getMaxVideoResolution();
    return out << video.getResolutionName() << " " << video.getVideoWidth() << "x"
               << video.getVideoHeight() << group.getSubWinList();
}

std::ostream& operator<<(std::ostream& out, const LayoutDecodingAbility& layout) {
    return out << layout.getLayoutModeID() << layout.getSubWinDecodingAbilityList();
}

std::ostream& operator<<(std::ostream& out, const NetworkCardAbility& card) {
    return out << card.getNetworkCardId() << card.getNetWorkingModeList();
}

template <typename Record>
std::ostream& operator<<(std::ostream& out, const std::vector<Record>& list) {
    out << "(";
    for (const Record& record : list) {
        out << " " << record;
    }
    return out << " )";
}

template <typename... Values> std::string text(const Values&... values) {
    std::ostringstream out;
    ((out << values << " "), ...);
    return out.str().substr(0, out.str().size() - 1);
}

/// What each step of the reading sets, in the order of the steps.
std::vector<std::string> steps(const NVRDeviceAbility& all) {
    const WebAbility& web = all.getWebAbility();
    return {
        text(all.getMaxChannelNumber(), all.getMaxDecodeAbility(), all.getMaxBitRate(),
             all.getDiskNumber()),
        text(all.getMaxDispatchNumber()),
        text(all.getMaxPlaybackChannelNumber()),
        text(all.getInterPhoneFlag()),
        text(all.getAlarmInDeviceNumber(), all.getAlarmOutputDeviceNumber()),
        text(all.getMonitorAbilityList()),
        text(all.getLayoutAbility().getLayoutModelList()),
        text(all.getDecodingAbility().getLayoutDecodingAbilityList()),
        text(all.getNetworkAbility().getNetworkCardNum(),
             all.getNetworkAbility().getNetworkCardAbilityList()),
        text(web.getMaxPlaybackChannelNum(), web.getMaxLoginNum(),
             web.getLayoutAbility().getLayoutModelList()),
    };
}

enum Step {
    CHANNELS,
    DISPATCH,
    PLAYBACK,
    PHONE,
    ALARMS,
    MONITORS,
    LAYOUTS,
    DECODING,
    NETWORK,
    WEB
};

const std::vector<std::string> WHOLE{
    "32 33 34 35",
    "36",
    "37",
    "1",
    "38 39",
    "( 40( 2/3 two 1x2 1/3 one 3x4 ) 41( ) )",
    "( 42:43 42:44 )",
    "( 45( big 46x47( 48 49 ) small 50x51( ) ) 45( ) )",
    "4 ( 52( 53a11110 54b11001 55c10100 ) 52( ) )",
    "56 57 ( 58:59 )",
};

class AbilityDocument : public testing::Test {
protected:
    /// Reads the document without the elements or attributes that the XPath selects.
    int parseWithout(const char* what) {
        pugi::xml_document document;
        EXPECT_TRUE(document.load_file(DOCUMENT));
        const pugi::xpath_node_set selected = document.select_nodes(what);
        EXPECT_FALSE(selected.empty()) << what;
        for (const pugi::xpath_node& node : selected) {
            node.attribute() ? node.parent().remove_attribute(node.attribute())
                             : node.parent().remove_child(node.node());
        }
        document.save_file(m_Dir.path("ability.xml").c_str());
        m_Reader = NVRAbilityConfigure();
        m_Ability = NVRDeviceAbility();
        return parse(m_Dir.path("ability.xml"));
    }

    int parse(const std::string& path) {
        m_Reader.setAbilityConfigFileName(path);
        return m_Reader.parse(m_Ability);
    }

    TempDir m_Dir;
    NVRAbilityConfigure m_Reader;
    NVRDeviceAbility m_Ability;
    MonitorResolution m_Found;
};

TEST_F(AbilityDocument, MissingPartsCountAsNothingOrEndTheReading) {
    constexpr const char* FAILS = nullptr;
    const struct {
        const char* absent;
        Step step;
        const char* wanted;
    } cases[] = {
        {"//ChannelAbility", CHANNELS, FAILS},
        {"//ChannelAbility/@*", CHANNELS, "0 0 0 0"},
        {"//DispatchAbility", DISPATCH, "0"},
        {"//@MaxDispatchNum", DISPATCH, "0"},
        {"//MaxPlaybackChannelNumber", PLAYBACK, FAILS},
        {"//@value", PLAYBACK, "0"},
        {"//InterPhoneFlag", PHONE, FAILS},
        {"//@InterPhoneFlag", PHONE, "0"},
        {"//AlarmAbility", ALARMS, FAILS},
        {"//AlarmAbility/@*", ALARMS, "0 0"},
        {"/*/MonitorResolution", MONITORS, FAILS},
        {"/*/MonitorResolution/item[@type='2']", MONITORS, FAILS}, // though type 1 has this id
        {"//item/@name | //item/@width | //item/@height", MONITORS,
         "( 40( 2/3  0x0 1/3  0x0 ) 41( ) )"},
        {"//item[@name='one']", MONITORS, "( 40( 2/3 two 1x2 1/3 shadowed 5x6 ) 41( ) )"},
        {"//MonitorAbility", MONITORS, "( )"},
        {"//@monitorId", MONITORS, "( 0( 2/3 two 1x2 1/3 one 3x4 ) 0( ) )"},
        {"//MonitorAbility/MonitorResolution", MONITORS, "( 40( ) 41( ) )"},
        {"//@monitorType[.='1']", MONITORS, "( 40( 2/3 two 1x2 0/3 untyped 9x10 ) 41( ) )"},
        {"//MonitorResolution[@monitorType='1']/item/@*", MONITORS,
         "( 40( 2/3 two 1x2 1/0 none 7x8 ) 41( ) )"},
        {"/*/LayoutAbility", LAYOUTS, FAILS},
        {"/*/LayoutAbility/item", LAYOUTS, "( )"},
        {"/*/LayoutAbility/item[1]/@*", LAYOUTS, "( 0:0 42:44 )"},
        {"//DecodingAbility", DECODING, FAILS},
        {"//MaxVideoResolution[@width='50']", DECODING, FAILS},
        {"//SubWinList[not(item)]", DECODING, FAILS},
        {"//LayoutDecodingAbility", DECODING, "( )"},
        {"//SubWinDecodingAbility", DECODING, "( 45( ) 45( ) )"},
        {"//LayoutDecodingAbility/@* | //MaxVideoResolution/@* | //@winId", DECODING,
         "( 0(  0x0( 0 0 )  0x0( ) ) 0( ) )"},
        {"//NetworkAbility", NETWORK, FAILS},
        {"//NetworkCard", NETWORK, "4 ( )"},
        {"//@networkCardNum | //@networkcardID | //NetworkCard/item[2]/@*", NETWORK,
         "0 ( 0( 53a11110 000000 55c10100 ) 0( ) )"},
        {"//WebAbility", WEB, "1 1 ( 0:1 1:4 )"},
        {"//WebAbility/LayoutAbility", WEB, FAILS},
        {"//WebAbility/@* | //WebAbility/*/item/@*", WEB, "0 0 ( 0:0 )"},
    };
    for (const auto& row : cases) {
        std::vector<std::string> wanted = WHOLE;
        if (row.wanted != FAILS) {
            wanted[row.step] = row.wanted;
        } else { // what was read before stays
            const std::vector<std::string> nothing = steps(NVRDeviceAbility());
            std::copy(nothing.begin() + row.step, nothing.end(), wanted.begin() + row.step);
        }
        CapturedLog log;
        EXPECT_EQ(parseWithout(row.absent), row.wanted == FAILS ? 0 : 1) << row.absent;
        EXPECT_EQ(steps(m_Ability), wanted) << row.absent;
        EXPECT_LE(log.take().size(), 1U) << row.absent;
        EXPECT_TRUE(row.step <= MONITORS || m_Reader.getMonitorResolutionList().size() == 5)
            << row.absent;
    }
}

TEST_F(AbilityDocument, TracesResolvedReferencesWhenAsked) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(parse(DOCUMENT), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    GlobalEnv::getInstance()->setPrintFlag(1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(parse(DOCUMENT), 1);
    GlobalEnv::getInstance()->setPrintFlag(0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "---MonitorResolution:MonitorResolutionID= 3,Type = 2,Name = two,Width = 1,Height = "
              "2-----\n"
              "---MonitorResolution:MonitorResolutionID= 3,Type = 1,Name = one,Width = 3,Height = "
              "4-----\n");
    EXPECT_EQ(m_Reader.getMonitorResolutionList().size(), 10U) << "the second reading appends";
    EXPECT_EQ(m_Reader.getMonitorResolution(1, 3, m_Found), 1);
    EXPECT_EQ(m_Reader.getMonitorResolution(2, 0, m_Found), 0);
    EXPECT_EQ(text(m_Found), "1/3 one 3x4") << "nothing found, nothing changed";
}

TEST_F(AbilityDocument, CollectorLoadsBothDocumentsInOrder) {
    DeviceAbilityCollector collector;
    CapturedLog log;
    EXPECT_EQ(collector.init(), 0) << "no paths";
    EXPECT_EQ(steps(collector.getDeviceAbility()), steps(NVRDeviceAbility()));
    EXPECT_EQ(collector.getMonitorResolution(3, m_Found), 0);

    collector.setAbilityConfigFileName(DOCUMENT);
    collector.setFileSystemFileName(m_Dir.path("systems.xml"));
    EXPECT_EQ(collector.init(), 0) << "no file-system document";
    EXPECT_EQ(steps(collector.getDeviceAbility()), WHOLE);
    EXPECT_EQ(collector.getMonitorResolution(3, m_Found), 1);
    EXPECT_EQ(collector.getMonitorResolution(4, m_Found), 0);
    EXPECT_EQ(text(m_Found), "2/3 two 1x2") << "the first of whatever type";

    m_Dir.write("systems.xml",
                R"(<F><FileSystemAbility><item id="2" name="b" supportRecordFlag="1"/>
        <item id="1" name="a" maxPartitionSize="5" supportFormatFlag="1"/></FileSystemAbility></F>)");
    EXPECT_EQ(collector.init(), 1);
    EXPECT_EQ(collector.getMonitorResolutionList().size(), 5U) << "replaced, not appended";
    m_Dir.write("systems.xml", "<F/>");
    EXPECT_EQ(collector.initFileSystemAbility(), 0);
    std::string systems;
    for (const auto& system : collector.getDeviceAbility().getFileSystemAbilityList()) {
        systems += text(system.getFileSystemId(), system.getName(), system.getMaxPartitionSize(),
                        system.getSupportFormatFlag(), system.getSupportRecordFlag(), "");
    }
    EXPECT_EQ(systems, "2 b 0 0 1 1 a 5 1 0 ") << "a failed reading changes nothing";
}

TEST(AbilityRecords, CutLongNamesBetweenCharacters) {
    const std::string full(63, 'x');
    const std::string gbk(70, '\xBF');
    const std::pair<std::string, std::string> cases[] = {
        {full, full},
        {full + "y", full},
        {full.substr(1) + "\xC3\xA9", full.substr(1)},
        {full.substr(3) + "\xF0\x9F\x98\x80", full.substr(3)},
        {full.substr(3) + "\xE2\x82\xAC" + "y", full.substr(3) + "\xE2\x82\xAC"},
        {gbk, gbk.substr(0, 63)},
    };
    NetWorkingMode mode;
    for (const auto& [name, wanted] : cases) {
        mode.setWorkingName(name.c_str());
        EXPECT_EQ(mode.getWorkingName(), wanted);
    }
    mode.setWorkingName(nullptr);
    EXPECT_STREQ(mode.getWorkingName(), "");
}

} // namespace
