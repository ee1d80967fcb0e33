#include "platform/NetController.h"

#include <fstream>
#include <gtest/gtest.h>

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
        const std::string folder = "/sys/class/net/" + one.name + "/";
        int index = 0, mtu = 0;
        std::ifstream(folder + "ifindex") >> index;
        std::ifstream(folder + "mtu") >> mtu;
        EXPECT_TRUE(one.index == index && one.mtu == mtu) << one.name;
    }
}

} // namespace
