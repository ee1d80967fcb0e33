#pragma once

#include "config/ConfigFileNameConst.h"
#include "config/MachineConfigurationDetail.h"
#include "support/SimulatedBoard.h"

#include <string>
#include <vector>

/// A simulated board with a hardware configuration of the given lines.
class ConfiguredBoard : public SimulatedBoard {
public:
    struct Item {
        int id, group, bit, validLevel;
    };

    ConfiguredBoard(const std::vector<Item>& inputs, const std::vector<Item>& outputs) {
        writeFile(ConfigFileNameConst::getHardwareConfigFileName(),
                  "<HardwareConfig>" + section("GPIOAlarmIn", inputs) +
                      section("GPIOAlarmOut", outputs) + "</HardwareConfig>");
        writeFile(ConfigFileNameConst::getMachineInfoFileName(), "[machine]\nmodel = test\n");
        writeFile(ConfigFileNameConst::getSoftwarePackageFileName(), "[package]\nname = test\n");
    }

    SafePointer<MachineConfigurationDetail> makeDetail() const {
        SafePointer<MachineConfigurationDetail> detail(new ("test", __LINE__)
                                                           MachineConfigurationDetail);
        EXPECT_NE(detail->init(), 0);
        return SafePointer<MachineConfigurationDetail>(detail);
    }

    void writeFile(const std::string& boardPath, const std::string& text) const {
        const path file = GlobalEnv::getInstance()->resolve(boardPath);
        std::filesystem::create_directories(file.parent_path());
        EXPECT_TRUE(std::ofstream(file) << text);
    }

private:
    static std::string section(const std::string& name, const std::vector<Item>& items) {
        std::string text = "<" + name + ">\n";
        for (const Item& item : items) {
            text += "<item id='" + std::to_string(item.id) + "' group='" +
                    std::to_string(item.group) + "' bitPosition='" + std::to_string(item.bit) +
                    "' validLevel='" + std::to_string(item.validLevel) + "'/>\n";
        }
        return text + "</" + name + ">\n";
    }
};
