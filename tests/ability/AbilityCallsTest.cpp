#include "ability/NVRAbilityConfigure.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using Node = SafePointer<XmlConfigureNode>;

std::string s_Calls;
std::string s_Failing;

int call(const std::string& what) {
    s_Calls += what + " ";
    return what == s_Failing ? 0 : 1;
}

/// Of another framework's document: every node is there once, every number is 9, and a call that
/// fails has filled in its result nevertheless.
class FakeNode : public XmlConfigureNode {
public:
    int getConfigNode(const std::string& name, Node& out) const override {
        out = Node(new FakeNode);
        return call(name);
    }
    int getConfigNodeList(const std::string& name, std::vector<Node>& out) const override {
        out.assign(1, Node(new FakeNode));
        return call(name + "*");
    }
    int getItemList(std::vector<SafePointer<XmlConfigureItem>>&) const override {
        return call("items");
    }
    int getProperty(const std::string& name, int& out) const override {
        out = 9;
        return call(name);
    }
    int getProperty(const std::string& name, bool&) const override { return call(name); }
    int getProperty(const std::string& name, std::string&) const override { return call(name); }
};

} // namespace

struct XmlConfigureTool::Impl {};
XmlConfigureTool::XmlConfigureTool() = default;
XmlConfigureTool::~XmlConfigureTool() = default;
int XmlConfigureTool::open(const std::string& path, int version, OPEN_MODE mode) {
    return call(path + std::to_string(version) + std::to_string(mode));
}
int XmlConfigureTool::getConfigNode(const std::string& name, Node& out) const {
    return FakeNode().getConfigNode(name, out);
}
int XmlConfigureTool::getConfigNodeList(const std::string& name, std::vector<Node>& out) const {
    return FakeNode().getConfigNodeList(name, out);
}

namespace {

constexpr char CALLS[] =
    "path11 ChannelAbility channelNumber maxDecodeAbility maxBitRate diskNumber "
    "DispatchAbility MaxDispatchNum MaxPlaybackChannelNumber value InterPhoneFlag InterPhoneFlag "
    "AlarmAbility alarmInDeviceNumber alarmOutputDeviceNumber MonitorResolution items "
    "MonitorAbility* monitorId MonitorResolution* monitorType items LayoutAbility items "
    "DecodingAbility LayoutDecodingAbility* layoutmodeId SubWinDecodingAbility* MaxVideoResolution "
    "width height resolutionname SubWinList items NetworkAbility networkCardNum NetworkCard* "
    "networkcardID items WebAbility MaxPlaybackChannelNumber MaxLoginNum LayoutAbility items ";

TEST(AbilityCalls, AreTheSameOnEveryFramework) {
    const struct {
        const char* missing;
        std::string notAsked; // where it comes last
        int dispatch, login;
    } rows[] = {{"", "", 9, 9},
                {"DispatchAbility", "MaxDispatchNum ", 0, 9},
                {"MonitorResolution*", "monitorType items ", 9, 9},
                {"WebAbility", "MaxPlaybackChannelNumber MaxLoginNum LayoutAbility items ", 9, 1}};
    for (const auto& row : rows) {
        s_Failing = row.missing;
        NVRAbilityConfigure reader;
        reader.setAbilityConfigFileName("path");
        NVRDeviceAbility ability;
        EXPECT_EQ(reader.parse(ability), 1) << row.missing;
        std::string calls = CALLS;
        calls.erase(calls.rfind(row.notAsked), row.notAsked.size());
        EXPECT_EQ(std::exchange(s_Calls, {}), calls);
        EXPECT_EQ(ability.getMaxDispatchNumber(), row.dispatch);
        EXPECT_EQ(ability.getWebAbility().getMaxLoginNum(), row.login);
    }
}

} // namespace
