#include "commands/Abilities.h"

#include "config/ConfigFileNameConst.h"
#include "print/CommandError.h"
#include "print/LogBook.h"

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
