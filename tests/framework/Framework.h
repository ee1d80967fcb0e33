#pragma once

#include <string>

/// What a program sees of this framework beyond the headers it was written from.
namespace Framework {
/// Notes a call of the library's; `withLocks` adds how many XQMutexes its thread holds.
void note(const std::string& call, bool withLocks = false);
std::string taken();                      ///< the notes since the last time
void pass();                              ///< the worker, if it is started, makes one pass
void edge(int group, int bit, int level); ///< an input changes, and its detector fires
void plugIn();                            ///< from now on there is a GPIO device
} // namespace Framework
