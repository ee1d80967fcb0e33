#pragma once

#include <atomic>
#include <functional>

/// What this program's requests to the kernel go through, the library's among them.
struct Requests {
    static inline thread_local int reads = 0; ///< of the levels of lines
    std::atomic<int> attempts{0};             ///< to get lines
    std::atomic<unsigned long> broken{0};     ///< this request fails ...
    std::atomic<int> error{0};                ///< ... with this error number
    std::atomic<bool> silent{false};          ///< the chips have no interrupts
    std::function<void()> after = [] {};      ///< called behind each
};
inline Requests s_Requests;
