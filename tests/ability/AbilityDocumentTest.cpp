#include "ability/DeviceAbilityCollector.h"
#include "ability/NVRAbilityConfigure.h"
#include "support/DocumentTest.h"

#include <pugixml.hpp>

namespace {

/// Writes values down: "1 2 {a, b}".
class Text {
public:
    template <typename... Values> static std::string of(const Values&... values) {
        std::string text;
        ((text += (text.empty() ? "" : " ") + one(values)), ...);
        return text;
    }

private:
    template <typename Record> static std::string one(const std::vector<Record>& records) {
        std::string text;
        for (const Record& record : records) {
            text += (text.empty() ? "" : ", ") + one(record);
        }
        return "{" + text + "}";
    }

    static std::string one(int value) { return std::to_string(value); }
    static std::string one(const std::string& value) { return value; }
    static std::string one(const MonitorResolution& r) {
        return of(r.getInputType(), r.getResolutionId(), r.getResolutionName(), r.getWidth(),
                  r.getHeight());
    }
    static std::string one(const MonitorAbility& r) {
        return of(r.getMonitorId(), r.getMonitorResolutionList());
    }
    static std::string one(const LayoutModel& r) { return of(r.getModelId(), r.getPicNumber()); }
    static std::string one(const SubWinDecodingAbility& r) {
        const VideoResolution& video = r.getMaxVideoResolution();
        return of(video.getVideoWidth(), video.getVideoHeight(), video.getResolutionName(),
                  r.getSubWinList());
    }
    static std::string one(const LayoutDecodingAbility& r) {
        return of(r.getLayoutModeID(), r.getSubWinDecodingAbilityList());
    }
    static std::string one(const NetWorkingMode& r) {
        return of(r.getWorkingType(), r.getWorkingName(), r.getSupportIpConfigFlag(),
                  r.getSupportDHCPServerFlag(), r.getSupportDHCPClientFlag(),
                  r.getSupportDNSConfigFlag(), r.getSupportPOEConfigFlag());
    }
    static std::string one(const NetworkCardAbility& r) {
        return of(r.getNetworkCardId(), r.getNetWorkingModeList());
    }
    static std::string one(const FileSystemAbility& r) {
        return of(r.getFileSystemId(), r.getName(), r.getMaxPartitionSize(),
                  r.getSupportFormatFlag(), r.getSupportRecordFlag());
    }
};

constexpr const char* FAILS = nullptr;

/// What each step of the reading sets from the whole document, and from one without the elements
/// or attributes that an XPath selects; a step that fails ends the reading.
const struct Step {
    const char* whole;
    std::vector<std::pair<const char*, const char*>> without;
} STEPS[] = {
    {"32 33 34 35", {{"//ChannelAbility", FAILS}, {"//ChannelAbility/@*", "0 0 0 0"}}},
    {"36", {{"//DispatchAbility", "0"}, {"//@MaxDispatchNum", "0"}}},
    {"37", {{"//MaxPlaybackChannelNumber", FAILS}, {"//@value", "0"}}},
    {"1", {{"//InterPhoneFlag", FAILS}, {"//@InterPhoneFlag", "0"}}},
    {"38 39", {{"//AlarmAbility", FAILS}, {"//AlarmAbility/@*", "0 0"}}},
    {"{40 {2 3 two 1 2, 1 3 one 3 4}, 41 {}}",
     {{"/*/MonitorResolution", FAILS},
      {"/*/MonitorResolution/item[@type='2']", FAILS}, // though type 1 has this id
      {"//item/@name | //item/@width | //item/@height", "{40 {2 3  0 0, 1 3  0 0}, 41 {}}"},
      {"//item[@name='one']", "{40 {2 3 two 1 2, 1 3 shadowed 5 6}, 41 {}}"},
      {"//MonitorAbility", "{}"},
      {"//@monitorId | //MonitorAbility/MonitorResolution", "{0 {}, 0 {}}"},
      {"//@monitorType[.='1']", "{40 {2 3 two 1 2, 0 3 untyped 9 10}, 41 {}}"},
      {"//*[@monitorType='1']/item/@*", "{40 {2 3 two 1 2, 1 0 none 7 8}, 41 {}}"}}},
    {"{42 43, 42 44}",
     {{"/*/LayoutAbility", FAILS},
      {"/*/LayoutAbility/item", "{}"},
      {"/*/LayoutAbility/item[1]/@*", "{0 0, 42 44}"}}},
    {"{45 {46 47 big {48, 49}, 50 51 small {}}, 45 {}}",
     {{"//DecodingAbility", FAILS},
      {"//MaxVideoResolution[@width='50']", FAILS},
      {"//SubWinList[not(item)]", FAILS},
      {"//LayoutDecodingAbility", "{}"},
      {"//@layoutmodeId | //SubWinDecodingAbility", "{0 {}, 0 {}}"},
      {"//MaxVideoResolution/@* | //@winId", "{45 {0 0  {0, 0}, 0 0  {}}, 45 {}}"}}},
    {"4 {52 {53 a 1 1 1 1 0, 54 b 1 1 0 0 1, 55 c 1 0 1 0 0}, 52 {}}",
     {{"//NetworkAbility", FAILS},
      {"//@networkCardNum | //NetworkCard", "0 {}"},
      {"//@networkcardID | //NetworkCard/item[2]/@*",
       "4 {0 {53 a 1 1 1 1 0, 0  0 0 0 0 0, 55 c 1 0 1 0 0}, 0 {}}"}}},
    {"56 57 {58 59}",
     {{"//WebAbility", "1 1 {0 1, 1 4}"},
      {"//WebAbility/LayoutAbility", FAILS},
      {"//WebAbility/@* | //WebAbility/*/item/@*", "0 0 {0 0}"}}},
};

/// What each step has set.
std::vector<std::string> stepsOf(const NVRDeviceAbility& all) {
    const NetworkAbility& network = all.getNetworkAbility();
    const WebAbility& web = all.getWebAbility();
    return {
        Text::of(all.getMaxChannelNumber(), all.getMaxDecodeAbility(), all.getMaxBitRate(),
                 all.getDiskNumber()),
        Text::of(all.getMaxDispatchNumber()),
        Text::of(all.getMaxPlaybackChannelNumber()),
        Text::of(all.getInterPhoneFlag()),
        Text::of(all.getAlarmInDeviceNumber(), all.getAlarmOutputDeviceNumber()),
        Text::of(all.getMonitorAbilityList()),
        Text::of(all.getLayoutAbility().getLayoutModelList()),
        Text::of(all.getDecodingAbility().getLayoutDecodingAbilityList()),
        Text::of(network.getNetworkCardNum(), network.getNetworkCardAbilityList()),
        Text::of(web.getMaxPlaybackChannelNum(), web.getMaxLoginNum(),
                 web.getLayoutAbility().getLayoutModelList()),
    };
}

class AbilityDocument : public DocumentTest {
protected:
    AbilityDocument() { m_Reader.setAbilityConfigFileName("/NVRAbility.xml"); }

    /// Makes a document without what the XPath selects.
    void cut(const char* without) {
        pugi::xml_document document;
        EXPECT_TRUE(document.load_file(NVRHW_FIXTURES "/NVRAbility.xml"));
        const pugi::xpath_node_set selected = document.select_nodes(without);
        EXPECT_FALSE(selected.empty());
        for (const pugi::xpath_node& node : selected) {
            node.attribute() ? node.parent().remove_attribute(node.attribute())
                             : node.parent().remove_child(node.node());
        }
        EXPECT_TRUE(document.save_file(real("/cut.xml").c_str()));
    }

    /// Reads the cut document over this ability: the step sets `wanted`.
    void expectReading(NVRDeviceAbility ability, const Step& step, const char* wanted) {
        std::vector<std::string> all = stepsOf(ability);
        for (const Step& done : STEPS) {
            if (wanted != FAILS || &done < &step) {
                all[&done - STEPS] = &done == &step ? wanted : done.whole;
            }
        }
        NVRAbilityConfigure reader;
        reader.setAbilityConfigFileName("/cut.xml");
        EXPECT_EQ(reader.parse(ability), wanted == FAILS ? 0 : 1);
        EXPECT_EQ(stepsOf(ability), all);
        const std::string log = m_Log.take();
        EXPECT_LE(std::count(log.begin(), log.end(), '\n'), wanted == FAILS ? 1 : 0) << log;
    }

    NVRAbilityConfigure m_Reader;
    NVRDeviceAbility m_Ability;
};

TEST_F(AbilityDocument, WhatIsMissingCountsAsNothingOrEndsTheReading) {
    ASSERT_EQ(m_Reader.parse(m_Ability), 1);
    for (const Step& step : STEPS) {
        for (const auto& [without, wanted] : step.without) {
            SCOPED_TRACE(without);
            cut(without);
            expectReading(NVRDeviceAbility(), step, wanted);
            expectReading(m_Ability, step, wanted);
        }
    }
}

TEST_F(AbilityDocument, TracesResolvedReferencesWhenAsked) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(m_Reader.parse(m_Ability), 1);
    GlobalEnv::getInstance()->setPrintFlag(1);
    EXPECT_EQ(m_Reader.parse(m_Ability), 1);
    GlobalEnv::getInstance()->setPrintFlag(0);
    const std::string start = "---MonitorResolution:MonitorResolutionID= 3,Type = ";
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              start + "2,Name = two,Width = 1,Height = 2-----\n" + start +
                  "1,Name = one,Width = 3,Height = 4-----\n");
    EXPECT_EQ(m_Reader.getMonitorResolutionList().size(), 10U) << "the second reading appends";
}

TEST_F(AbilityDocument, CollectorLoadsBothDocumentsInOrder) {
    DeviceAbilityCollector collector;
    collector.setFileSystemFileName("/fileSystems.xml");
    EXPECT_EQ(collector.init(), 0);
    expectRecord("XmlConfigure: no file name is set");
    EXPECT_EQ(Text::of(collector.getDeviceAbility().getFileSystemAbilityList()), "{}");

    collector.setAbilityConfigFileName("/NVRAbility.xml");
    collector.setFileSystemFileName("/none.xml");
    EXPECT_EQ(collector.init(), 0);
    expectRecord("FileSystemAbility: " + real("/none.xml: No such file or directory"));
    EXPECT_EQ(stepsOf(collector.getDeviceAbility()).back(), "56 57 {58 59}");
    MonitorResolution found;
    EXPECT_EQ(collector.getMonitorResolution(3, found), 1);
    EXPECT_EQ(collector.getMonitorResolution(4, found), 0);
    EXPECT_EQ(Text::of(found), "2 3 two 1 2") << "the first of whatever type";

    collector.setFileSystemFileName("/fileSystems.xml");
    EXPECT_EQ(collector.init(), 1);
    EXPECT_EQ(collector.getMonitorResolutionList().size(), 5U) << "replaced, not appended";
    EXPECT_EQ(Text::of(collector.getDeviceAbility().getFileSystemAbilityList()),
              "{2 b 0 0 1, 1 a 5 1 0}");
}

} // namespace
