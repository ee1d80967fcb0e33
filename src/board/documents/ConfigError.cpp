#include "board/documents/ConfigError.h"

Cause& ConfigError::lastFault() {
    thread_local Cause fault;
    return fault;
}
