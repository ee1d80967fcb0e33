#include "platform/NetController.h"

#include <fstream>
#include <gtest/gtest.h>
#include <net/if.h>

namespace {

TEST(NetController, ListsTheInterfacesOfTheMachine) {
    NetController net;
    NetInterface lo;
    ASSERT_EQ(net.getInterface("lo", lo), 1);
    EXPECT_EQ(net.getInterface("lo0", lo), 0);
    EXPECT_TRUE(lo.name == "lo" && lo.isUp && lo.isRunning && lo.mac.empty() && lo.speed == -1);
    ASSERT_FALSE(lo.ipv4.empty());
    EXPECT_EQ(lo.ipv4[0].address + "/" + std::to_string(lo.ipv4[0].prefixLength), "127.0.0.1/8");
    std::vector<NetInterface> all(1);
    ASSERT_EQ(net.getInterfaces(all), 1);
    for (const NetInterface& one : all) {
        int mtu = -1; // unknown where sysfs is not mounted
        std::ifstream("/sys/class/net/" + one.name + "/mtu") >> mtu;
        const auto index = static_cast<int>(if_nametoindex(one.name.c_str()));
        EXPECT_TRUE(one.index == index && one.mtu == mtu) << one.name;
    }
}

} // namespace
