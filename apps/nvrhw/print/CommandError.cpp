#include "print/CommandError.h"

#include "platform/Diagnostics.h"

CommandError CommandError::ofBoard(const std::string& cause) {
    return CommandError(cause + "; `nvrhw check --board " +
                        GlobalEnv::getInstance()->getRootDirectory() + "` says more");
}
