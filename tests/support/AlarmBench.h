#pragma once

#include "config/ConfigFileNameConst.h"
#include "config/MachineConfigurationDetail.h"
#include "gpio/GPIOOperator.h"
#include "support/FakeGPIO.h"
#include "support/SimulatedBoard.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// What alarm inputs and outputs are wired to: the configuration of some lines, read from files,
/// and an operator on a driver without hardware.
class AlarmBench : public testing::Test {
protected:
    struct Item {
        int id, group, bit, validLevel;
    };

    AlarmBench(const std::vector<Item>& inputs, const std::vector<Item>& outputs)
        : m_Detail(new ("test", __LINE__) MachineConfigurationDetail),
          m_Driver(new ("test", __LINE__) FakeGPIO),
          m_Operator(new ("test", __LINE__) GPIOOperator) {
        m_Board.writeFile(ConfigFileNameConst::getHardwareConfigFileName(),
                          "<Board>" + section("GPIOAlarmIn", inputs) +
                              section("GPIOAlarmOut", outputs) + "</Board>");
        m_Board.writeFile(ConfigFileNameConst::getMachineInfoFileName(), "");
        m_Board.writeFile(ConfigFileNameConst::getSoftwarePackageFileName(), "");
        EXPECT_NE(m_Detail->init(), 0);
        m_Operator->setGPIO(SafePointer<IGPIO>(m_Driver));
    }
    ~AlarmBench() noexcept override {}

    template <typename Manager> void wire(Manager& manager) {
        manager.setGPIOOperator(m_Operator);
        manager.setMachineConfigurationDetail(m_Detail);
        manager.init();
    }

    SafePointer<MachineConfigurationDetail> m_Detail;
    FakeGPIO* m_Driver; // owned by the operator
    SafePointer<GPIOOperator> m_Operator;

private:
    static std::string section(const std::string& name, const std::vector<Item>& items) {
        std::string text = "<" + name + ">";
        for (const Item& item : items) {
            text += "<item id='" + std::to_string(item.id) + "' group='" +
                    std::to_string(item.group) + "' bitPosition='" + std::to_string(item.bit) +
                    "' validLevel='" + std::to_string(item.validLevel) + "'/>";
        }
        return text + "</" + name + ">";
    }

    SimulatedBoard m_Board;
};
