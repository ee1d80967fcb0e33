#include "Abilities.h"

#include "CommandError.h"
#include "LogBook.h"
#include "config/ConfigFileNameConst.h"

Abilities::Abilities() {
    m_Collector.setAbilityConfigFileName(ConfigFileNameConst::getNVRAbilityFileName());
    m_Collector.setFileSystemFileName(ConfigFileNameConst::getFileSystemFileName());
    m_Collector.setHardwareConfigFileName(ConfigFileNameConst::getHardwareConfigFileName());
    if (m_Collector.init() == 0) {
        throw CommandError::ofBoard(
            "the abilities cannot be read: " +
            LogBook::takeCause("a reference in the ability document is wrong"));
    }
}
