#pragma once

#include "platform/FileSystemAbility.h"
#include "platform/FixedText.h"
#include "platform/NetworkAbility.h"
#include "platform/base/Export.h"

#include <string>
#include <vector>

// What the recorder can do, as the ability document states it. All records are plain values: they
// start with 0, false, empty texts and empty lists, own what they hold, and copy what a setter is
// given. Names keep the document's bytes; the document is UTF-8. Not protected by a lock.

/// A resolution of a display output, identified by its input type and id together.
class NVRHW_API MonitorResolution {
public:
    /// Several input types may use the same id.
    int getResolutionId() const { return m_ResolutionId; }
    void setResolutionId(int id) { m_ResolutionId = id; }

    /// The monitor input type the resolution belongs to.
    int getInputType() const { return m_InputType; }
    void setInputType(int type) { m_InputType = type; }

    /// At most 63 bytes; a longer name is cut.
    const char* getResolutionName() const { return m_ResolutionName.get(); }
    void setResolutionName(const char* name) { m_ResolutionName.set(name); }

    /// In pixels.
    int getWidth() const { return m_Width; }
    void setWidth(int width) { m_Width = width; }
    int getHeight() const { return m_Height; }
    void setHeight(int height) { m_Height = height; }

private:
    int m_ResolutionId = 0;
    int m_InputType = 0;
    FixedText<64> m_ResolutionName;
    int m_Width = 0;
    int m_Height = 0;
};

/// One display output and the resolutions it supports, in the order of the document.
class NVRHW_API MonitorAbility {
public:
    /// One for each reference of the document.
    using Resolutions = std::vector<MonitorResolution>;

    /// What MonitorParam refers to.
    int getMonitorId() const { return m_MonitorId; }
    void setMonitorId(int id) { m_MonitorId = id; }

    /// Of all input types it has, one group after the other.
    const Resolutions& getMonitorResolutionList() const { return m_MonitorResolutionList; }
    void setMonitorResolutionList(const Resolutions& list) { m_MonitorResolutionList = list; }

private:
    int m_MonitorId = 0;
    Resolutions m_MonitorResolutionList;
};

/// A screen layout.
class NVRHW_API LayoutModel {
public:
    /// What a LayoutDecodingAbility refers to.
    int getModelId() const { return m_ModelId; }
    void setModelId(int id) { m_ModelId = id; }

    /// How many pictures the layout shows.
    int getPicNumber() const { return m_PicNumber; }
    void setPicNumber(int number) { m_PicNumber = number; }

private:
    int m_ModelId = 0;
    int m_PicNumber = 0;
};

/// Screen layouts, in the order of the document.
class NVRHW_API LayoutAbility {
public:
    /// Neither ids nor their order are checked.
    const std::vector<LayoutModel>& getLayoutModelList() const { return m_LayoutModelList; }
    void setLayoutModelList(const std::vector<LayoutModel>& list) { m_LayoutModelList = list; }

private:
    std::vector<LayoutModel> m_LayoutModelList;
};

/// The size of a video picture, in pixels.
class NVRHW_API VideoResolution {
public:
    /// In pixels.
    int getVideoWidth() const { return m_VideoWidth; }
    void setVideoWidth(int width) { m_VideoWidth = width; }
    int getVideoHeight() const { return m_VideoHeight; }
    void setVideoHeight(int height) { m_VideoHeight = height; }

    /// As users know it, such as "1080p"; it lives as long as the record is not changed.
    const char* getResolutionName() const { return m_ResolutionName.c_str(); }
    void setResolutionName(const char* name) { m_ResolutionName = name == nullptr ? "" : name; }

private:
    int m_VideoWidth = 0;
    int m_VideoHeight = 0;
    std::string m_ResolutionName;
};

/// A group of sub-windows of one layout with the same decoding limit.
class NVRHW_API SubWinDecodingAbility {
public:
    /// The largest video these sub-windows can decode.
    const VideoResolution& getMaxVideoResolution() const { return m_MaxVideoResolution; }
    void setMaxVideoResolution(const VideoResolution& resolution) {
        m_MaxVideoResolution = resolution;
    }

    /// The numbers of the sub-windows, in the order of the document.
    const std::vector<int>& getSubWinList() const { return m_SubWinList; }
    void setSubWinList(const std::vector<int>& list) { m_SubWinList = list; }

private:
    VideoResolution m_MaxVideoResolution;
    std::vector<int> m_SubWinList;
};

/// What one layout can decode.
class NVRHW_API LayoutDecodingAbility {
public:
    /// The groups of one layout.
    using SubWinGroups = std::vector<SubWinDecodingAbility>;

    /// The LayoutModel's model id.
    int getLayoutModeID() const { return m_LayoutModeID; }
    void setLayoutModeID(int id) { m_LayoutModeID = id; }
    const SubWinGroups& getSubWinDecodingAbilityList() const { return m_SubWinDecodingAbilityList; }
    void setSubWinDecodingAbilityList(const SubWinGroups& list) {
        m_SubWinDecodingAbilityList = list;
    }

private:
    int m_LayoutModeID = 0;
    SubWinGroups m_SubWinDecodingAbilityList;
};

/// The decoding ability of every layout, in the order of the document.
class NVRHW_API DecodingAbility {
public:
    /// One for each layout that can decode.
    using Layouts = std::vector<LayoutDecodingAbility>;

    /// A layout that is not in it has no decoding limits stated.
    const Layouts& getLayoutDecodingAbilityList() const { return m_LayoutDecodingAbilityList; }
    void setLayoutDecodingAbilityList(const Layouts& list) { m_LayoutDecodingAbilityList = list; }

private:
    Layouts m_LayoutDecodingAbilityList;
};

/// The limits of the web client.
class NVRHW_API WebAbility {
public:
    /// How many channels it may play back at once.
    int getMaxPlaybackChannelNum() const { return m_MaxPlaybackChannelNum; }
    void setMaxPlaybackChannelNum(int number) { m_MaxPlaybackChannelNum = number; }

    /// How many may be logged in at once.
    int getMaxLoginNum() const { return m_MaxLoginNum; }
    void setMaxLoginNum(int number) { m_MaxLoginNum = number; }

    /// The layouts it offers.
    const LayoutAbility& getLayoutAbility() const { return m_LayoutAbility; }
    void setLayoutAbility(const LayoutAbility& ability) { m_LayoutAbility = ability; }

private:
    int m_MaxPlaybackChannelNum = 0;
    int m_MaxLoginNum = 0;
    LayoutAbility m_LayoutAbility;
};

/// Everything the recorder can do. The numbers are those the document states; they need not be
/// the lengths of the lists.
class NVRHW_API NVRDeviceAbility {
public:
    /// One for each display output.
    using Monitors = std::vector<MonitorAbility>;

    /// From the file-system ability document.
    using FileSystems = std::vector<FileSystemAbility>;

    /// How many video channels it has.
    int getMaxChannelNumber() const { return m_MaxChannelNumber; }
    void setMaxChannelNumber(int number) { m_MaxChannelNumber = number; }

    /// How many channels it can decode at once.
    int getMaxDecodeAbility() const { return m_MaxDecodeAbility; }
    void setMaxDecodeAbility(int ability) { m_MaxDecodeAbility = ability; }

    /// Over all channels, in kbit/s.
    int getMaxBitRate() const { return m_MaxBitRate; }
    void setMaxBitRate(int rate) { m_MaxBitRate = rate; }

    /// How many disks it has room for.
    int getDiskNumber() const { return m_DiskNumber; }
    void setDiskNumber(int number) { m_DiskNumber = number; }

    /// As the document states it; what is dispatched is the application's affair.
    int getMaxDispatchNumber() const { return m_MaxDispatchNumber; }
    void setMaxDispatchNumber(int number) { m_MaxDispatchNumber = number; }

    /// How many channels can be played back at once.
    int getMaxPlaybackChannelNumber() const { return m_MaxPlaybackChannelNumber; }
    void setMaxPlaybackChannelNumber(int number) { m_MaxPlaybackChannelNumber = number; }

    /// It has an intercom.
    bool getInterPhoneFlag() const { return m_InterPhoneFlag; }
    void setInterPhoneFlag(bool flag) { m_InterPhoneFlag = flag; }

    /// How many alarm inputs and outputs it has; the lines themselves stand in the hardware
    /// configuration.
    int getAlarmInDeviceNumber() const { return m_AlarmInDeviceNumber; }
    void setAlarmInDeviceNumber(int number) { m_AlarmInDeviceNumber = number; }
    int getAlarmOutputDeviceNumber() const { return m_AlarmOutputDeviceNumber; }
    void setAlarmOutputDeviceNumber(int number) { m_AlarmOutputDeviceNumber = number; }

    /// The display outputs.
    const Monitors& getMonitorAbilityList() const { return m_MonitorAbilityList; }
    void setMonitorAbilityList(const Monitors& list) { m_MonitorAbilityList = list; }

    /// The layouts of the local display.
    const LayoutAbility& getLayoutAbility() const { return m_LayoutAbility; }
    void setLayoutAbility(const LayoutAbility& ability) { m_LayoutAbility = ability; }
    const DecodingAbility& getDecodingAbility() const { return m_DecodingAbility; }
    void setDecodingAbility(const DecodingAbility& ability) { m_DecodingAbility = ability; }
    const NetworkAbility& getNetworkAbility() const { return m_NetworkAbility; }
    void setNetworkAbility(const NetworkAbility& ability) { m_NetworkAbility = ability; }
    const WebAbility& getWebAbility() const { return m_WebAbility; }
    void setWebAbility(const WebAbility& ability) { m_WebAbility = ability; }
    const FileSystems& getFileSystemAbilityList() const { return m_FileSystemAbilityList; }
    void setFileSystemAbilityList(const FileSystems& list) { m_FileSystemAbilityList = list; }

private:
    int m_MaxChannelNumber = 0;
    int m_MaxDecodeAbility = 0;
    int m_MaxBitRate = 0;
    int m_DiskNumber = 0;
    int m_MaxDispatchNumber = 0;
    int m_MaxPlaybackChannelNumber = 0;
    bool m_InterPhoneFlag = false;
    int m_AlarmInDeviceNumber = 0;
    int m_AlarmOutputDeviceNumber = 0;
    Monitors m_MonitorAbilityList;
    LayoutAbility m_LayoutAbility;
    DecodingAbility m_DecodingAbility;
    NetworkAbility m_NetworkAbility;
    WebAbility m_WebAbility;
    FileSystems m_FileSystemAbilityList;
};
