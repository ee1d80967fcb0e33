#include "service/IServiceFactory.h"

#include <gtest/gtest.h>

namespace {

/// Says its name when it goes.
class Service {
public:
    Service(std::string name, std::string& journal) : m_Name(std::move(name)), m_Journal(journal) {}
    Service(const Service&) = delete;
    ~Service() { m_Journal += m_Name + " "; }

    const std::string m_Name;

private:
    std::string& m_Journal;
};

class OtherService {};

class Factory : public IServiceFactory {
public:
    explicit Factory(std::string& journal) : m_Journal(journal) {}

    int start() override { return 1; }
    void stop() override {}
    void add(const char* name, const char* label) {
        registerService(name, SafePointer<Service>(new Service(label, m_Journal)));
    }

private:
    std::string& m_Journal;
};

TEST(IServiceFactory, KeepsServicesByNameAndReleasesThemInOrder) {
    std::string journal;
    {
        Factory factory(journal);
        for (const char* name : {"gpio", "systemTime", "RealGPIO", "moniter", "I2CController"}) {
            EXPECT_EQ(factory.getService(name), nullptr);
            factory.add(name, name);
        }
        BaseSafePointer* holder = factory.getService("gpio");
        ASSERT_NE(dynamic_cast<SafePointer<Service>*>(holder), nullptr);
        EXPECT_EQ(dynamic_cast<SafePointer<OtherService>*>(holder), nullptr);
        EXPECT_EQ(factory.getService("GPIO"), nullptr);
        EXPECT_EQ(factory.getService("gpi"), nullptr);

        factory.add("gpio", "latecomer");
        EXPECT_EQ(journal, "latecomer ") << "a name that is taken keeps its service";
        EXPECT_EQ(factory.getService("gpio"), holder);
        journal.clear();
    }
    EXPECT_EQ(journal, "I2CController RealGPIO gpio moniter systemTime ");
}

} // namespace
