#pragma once

#include "platform/base/Export.h"

#include <string>

/// A type of monitor, for the application's own use.
class NVRHW_API MonitorTypeConfigure {
public:
    /// All fields are the application's: the library neither fills nor reads them.
    void setId(int id) { m_Id = id; }
    int getId() const { return m_Id; }
    void setName(const std::string& name) { m_Name = name; }
    const std::string& getName() const { return m_Name; }
    void setType(int type) { m_Type = type; }
    int getType() const { return m_Type; }

    /// In pixels.
    void setWidth(int width) { m_Width = width; }
    int getWidth() const { return m_Width; }
    void setHeight(int height) { m_Height = height; }
    int getHeight() const { return m_Height; }

private:
    int m_Id = 0;
    std::string m_Name;
    int m_Type = 0;
    int m_Width = 0;
    int m_Height = 0;
};
