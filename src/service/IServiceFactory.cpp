#include "service/IServiceFactory.h"

IServiceFactory::~IServiceFactory() { releaseServices(); }

BaseSafePointer* IServiceFactory::getService(const std::string& name) const {
    const auto found = m_ServiceMap.find(name);
    return found != m_ServiceMap.end() ? found->second : nullptr;
}

void IServiceFactory::releaseServices() {
    for (auto& entry : m_ServiceMap) {
        delete entry.second;
        entry.second = nullptr;
    }
    m_ServiceMap.clear();
}
