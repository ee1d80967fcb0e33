#pragma once

#include <functional>
#include <string>
#include <vector>

/// What a thread asks of the kernel, counted exactly: the work runs in a child process under
/// ptrace.
namespace SystemCalls {

/// Marks a point in the calling thread.
void mark();

/// Runs the work in a child process. The calls between each two marks of a thread, as "close*2
/// read": by name, waits for locks left out. Empty when no process may be traced here.
std::vector<std::string> betweenMarks(const std::function<void()>& work);

} // namespace SystemCalls
