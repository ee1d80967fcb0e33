#include "platform/base/Mutex.h"

#include "platform/Diagnostics.h"

#include <string>
#include <system_error>

// The analysis cannot look into the std::mutex behind the capability.
void XQMutex::Lock(const char* file, int line) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    if (m_Owner.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
        const std::string text = "this thread already holds the lock it asks for, since " +
                                 std::string(m_File) + ":" + std::to_string(m_Line);
        Logger::writeLog("XQMutex", text.c_str(), file, line);
        throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur),
                                text);
    }
    m_Mutex.lock();
    m_Owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    m_File = file;
    m_Line = line;
}

void XQMutex::Unlock(const char* /*file*/, int /*line*/) NVRHW_NO_THREAD_SAFETY_ANALYSIS {
    m_Owner.store(std::thread::id(), std::memory_order_relaxed);
    m_Mutex.unlock();
}
