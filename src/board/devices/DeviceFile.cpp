#include "board/devices/DeviceFile.h"

#include "board/runtime/ErrnoText.h"
#include "platform/Diagnostics.h"

#include <fcntl.h>
#include <stdexcept>

DeviceFile::DeviceFile(const std::string& path, int access, Hints hints)
    : m_Path(GlobalEnv::getInstance()->resolve(path)),
      m_File(::open(m_Path.c_str(), access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (!m_File.isValid()) {
        fail(m_Path, hints);
    }
}

void DeviceFile::fail(const std::string& what, Hints hints) {
    const int error = errno;
    std::string text = errnoText(what);
    for (const Hint& hint : hints) {
        if (hint.error == error) {
            text += std::string(" (") + hint.text + ")";
        }
    }
    throw std::runtime_error(text);
}
