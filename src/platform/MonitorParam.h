#pragma once

#include "platform/base/Export.h"

#include <memory>
#include <string>
#include <vector>

/// The parameters of one monitor (display output).
class NVRHW_API MonitorParam {
public:
    /// Which display output, as the ability document numbers them.
    int getMonitorId() const { return m_MonitorId; }
    void setMonitorId(int id) { m_MonitorId = id; }

    /// The input type, as the ability document's resolutions name it.
    int getType() const { return m_Type; }
    void setType(int type) { m_Type = type; }

    /// Names, together with the type, a resolution of the ability document.
    int getResolutionId() const { return m_ResolutionId; }
    void setResolutionId(int id) { m_ResolutionId = id; }

    /// Whether the output is in use.
    bool isEnabled() const { return m_Enabled; }
    void setEnabled(bool enabled) { m_Enabled = enabled; }

    /// Position of the picture on the display, in pixels; may be negative.
    int getX() const { return m_X; }
    void setX(int x) { m_X = x; }
    int getY() const { return m_Y; }
    void setY(int y) { m_Y = y; }

    /// Size of the picture, in pixels: 0 or more.
    int getWidth() const { return m_Width; }
    void setWidth(int width) { m_Width = width; }
    int getHeight() const { return m_Height; }
    void setHeight(int height) { m_Height = height; }

    /// In hertz: 0 (the display's own) or more.
    int getRefreshRate() const { return m_RefreshRate; }
    void setRefreshRate(int rate) { m_RefreshRate = rate; }

    /// 0 to 100.
    int getBrightness() const { return m_Brightness; }
    void setBrightness(int brightness) { m_Brightness = brightness; }

private:
    int m_MonitorId = 0;
    int m_Type = 0;
    int m_ResolutionId = 0;
    bool m_Enabled = false;
    int m_X = 0;
    int m_Y = 0;
    int m_Width = 0;
    int m_Height = 0;
    int m_RefreshRate = 0;
    int m_Brightness = 50;
};

/// The monitor parameters of one file, which docs/configuration.md describes.
///
/// Every operation reads the file anew, so that several processes may share it. It is replaced
/// whole: a crash or a power cut leaves the old or the new content. Thread-safe. A missing file
/// is an empty store; one that cannot be read makes every operation fail, with the cause in the
/// log, and is never overwritten.
class NVRHW_API MonitorParamConfig {
public:
    /// `version` is the layout of the file; there is only 1.
    MonitorParamConfig(int version, const std::string& path);
    ~MonitorParamConfig();
    MonitorParamConfig(const MonitorParamConfig&) = delete;
    MonitorParamConfig& operator=(const MonitorParamConfig&) = delete;

    /// Adds the record or replaces the one with its monitor id: non-zero when it is on the disk;
    /// 0, with the cause in the log and the file as it was, when a value is out of its range or
    /// the file could not be written.
    int setMonitorParam(const MonitorParam& param);

    /// Fills `param` with the record of this monitor id: non-zero when there is one; `param` is
    /// otherwise untouched.
    int getMonitorType(int monitorId, MonitorParam& param);

    /// Replaces `params` by all records, in the order of the file: non-zero on success.
    int getAllMonitorParam(std::vector<MonitorParam>& params);

private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};
