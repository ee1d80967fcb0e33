#include "board/ConfigProperty.h"
#include "platform/XmlConfigure.h"

XmlConfigureItem::XmlConfigureItem(std::unique_ptr<XmlElement> element)
    : m_Element(std::move(element)) {}

XmlConfigureItem::~XmlConfigureItem() = default;

int XmlConfigureItem::getProperty(const std::string& name, int& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureItem::getProperty(const std::string& name, bool& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}

int XmlConfigureItem::getProperty(const std::string& name, std::string& out) const {
    return ConfigProperty::get(*m_Element, name, out);
}
