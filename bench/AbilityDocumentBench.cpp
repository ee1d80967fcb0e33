#include "BenchBoard.h"
#include "ability/NVRAbilityConfigure.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <pugixml.hpp>

namespace {

constexpr char PATH[] = "/ability.xml";

std::string windows(int count) {
    std::string text;
    for (int id = 0; id < count; ++id) {
        text += "<item winId=\"" + std::to_string(id) + "\"/>";
    }
    return text;
}

/// The sample's sections, with this many layouts of nine windows.
std::string document(int layouts) {
    std::string models;
    std::string decoding;
    for (int id = 0; id < layouts; ++id) {
        const std::string number = std::to_string(id);
        models += "<item modelId=\"" + number + "\" picNumber=\"9\"/>\n";
        decoding += "<LayoutDecodingAbility layoutmodeId=\"" + number +
                    "\"><SubWinDecodingAbility>\n<MaxVideoResolution width=\"1920\" "
                    "height=\"1080\" resolutionname=\"1080p\"/>\n<SubWinList>" +
                    windows(9) + "</SubWinList></SubWinDecodingAbility></LayoutDecodingAbility>\n";
    }
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<NVRAbility>
<ChannelAbility channelNumber="32" maxDecodeAbility="32" maxBitRate="393216" diskNumber="8"/>
<DispatchAbility MaxDispatchNum="128"/>
<MaxPlaybackChannelNumber value="16"/>
<InterPhoneFlag InterPhoneFlag="true"/>
<AlarmAbility alarmInDeviceNumber="16" alarmOutputDeviceNumber="4"/>
<MonitorResolution><item id="0" type="1" name="1280x720" width="1280" height="720"/></MonitorResolution>
<MonitorAbility monitorId="0"><MonitorResolution monitorType="1"><item monitorResolutionId="0"/>
</MonitorResolution></MonitorAbility>
<LayoutAbility>)" +
           models + "</LayoutAbility>\n<DecodingAbility>" + decoding + R"(</DecodingAbility>
<NetworkAbility networkCardNum="1"><NetworkCard networkcardID="0">
<item networkingType="1" netWorkingModeName="independent" supportIPCConfigFlag="true"
 supportDHCPServerFlag="false" supportDHCPClientFlag="true" supportDNSConfigFlag="true"
 supportPOEConfigFlag="false"/></NetworkCard></NetworkAbility>
<WebAbility MaxPlaybackChannelNumber="4" MaxLoginNum="16"><LayoutAbility>
<item modelId="0" picNumber="1"/></LayoutAbility></WebAbility>
</NVRAbility>
)";
}

void readOurs(benchmark::State& state) {
    const BenchBoard board(0, 0);
    board.writeFile(PATH, document(static_cast<int>(state.range())));
    for (auto _ : state) {
        NVRAbilityConfigure reader;
        reader.setAbilityConfigFileName(PATH);
        NVRDeviceAbility ability;
        if (reader.parse(ability) == 0) {
            state.SkipWithError("not read");
        }
        benchmark::DoNotOptimize(ability);
    }
}

/// What is done for each node beside reading it: nothing.
struct Nothing {
    explicit Nothing(const std::shared_ptr<pugi::xml_document>& /*document*/) {}
    void operator()() const {}
};

/// A counted object that keeps the document alive, as the nodes are that the readers see.
struct CountedNode {
    struct Node {
        virtual ~Node() = default;
        std::shared_ptr<pugi::xml_document> document;
        void* element = nullptr;
    };

    explicit CountedNode(const std::shared_ptr<pugi::xml_document>& each) : document(each) {}
    void operator()() const {
        SafePointer<Node> node(new Node);
        node->document = document;
        benchmark::DoNotOptimize(node);
    }

    const std::shared_ptr<pugi::xml_document>& document;
};

template <typename Each> LayoutAbility layoutsOf(const pugi::xml_node& node, Each each) {
    std::vector<LayoutModel> models;
    for (const pugi::xml_node item : node.children("item")) {
        each();
        models.emplace_back();
        models.back().setModelId(item.attribute("modelId").as_int());
        models.back().setPicNumber(item.attribute("picNumber").as_int());
    }
    LayoutAbility layouts;
    layouts.setLayoutModelList(models);
    return layouts;
}

template <typename Each> SubWinDecodingAbility groupOf(const pugi::xml_node& node, Each each) {
    const pugi::xml_node largest = node.child("MaxVideoResolution");
    each();
    VideoResolution resolution;
    resolution.setVideoWidth(largest.attribute("width").as_int());
    resolution.setVideoHeight(largest.attribute("height").as_int());
    resolution.setResolutionName(largest.attribute("resolutionname").value());
    std::vector<int> windows;
    each();
    for (const pugi::xml_node item : node.child("SubWinList").children("item")) {
        each();
        windows.push_back(item.attribute("winId").as_int());
    }
    SubWinDecodingAbility group;
    group.setMaxVideoResolution(resolution);
    group.setSubWinList(windows);
    return group;
}

template <typename Each> DecodingAbility decodingOf(const pugi::xml_node& node, Each each) {
    std::vector<LayoutDecodingAbility> layouts;
    for (const pugi::xml_node child : node.children("LayoutDecodingAbility")) {
        each();
        std::vector<SubWinDecodingAbility> groups;
        for (const pugi::xml_node group : child.children("SubWinDecodingAbility")) {
            each();
            groups.push_back(groupOf(group, each));
        }
        layouts.emplace_back();
        layouts.back().setLayoutModeID(child.attribute("layoutmodeId").as_int());
        layouts.back().setSubWinDecodingAbilityList(groups);
    }
    DecodingAbility decoding;
    decoding.setLayoutDecodingAbilityList(layouts);
    return decoding;
}

// The sections that grow; the others are a few lines in a document of any size.
template <typename Each> void readPeer(benchmark::State& state) {
    const BenchBoard board(0, 0);
    board.writeFile(PATH, document(static_cast<int>(state.range())));
    const std::string path = board.root() + PATH;
    for (auto _ : state) {
        const auto document = std::make_shared<pugi::xml_document>();
        if (!document->load_file(path.c_str())) {
            state.SkipWithError("not read");
        }
        const Each each(document);
        const pugi::xml_node root = document->document_element();
        const pugi::xml_node channels = root.child("ChannelAbility");
        NVRDeviceAbility ability;
        ability.setMaxChannelNumber(channels.attribute("channelNumber").as_int());
        ability.setMaxDecodeAbility(channels.attribute("maxDecodeAbility").as_int());
        ability.setLayoutAbility(layoutsOf(root.child("LayoutAbility"), each));
        ability.setDecodingAbility(decodingOf(root.child("DecodingAbility"), each));
        benchmark::DoNotOptimize(ability);
    }
}

const std::vector<std::int64_t> LAYOUTS{8, 100, 1000, 8000};
BENCHMARK(readOurs)->Name("ability-document/ours")->ArgsProduct({LAYOUTS});
BENCHMARK(readPeer<Nothing>)->Name("ability-document/peer")->ArgsProduct({LAYOUTS});
BENCHMARK(readPeer<CountedNode>)->Name("ability-document/floor")->ArgsProduct({LAYOUTS});

} // namespace
