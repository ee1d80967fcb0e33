#pragma once

#include <string>
#include <vector>

/// ": did you mean NAME?" with the known name that is so near to what somebody wrote that it must
/// be meant; empty when there is none.
std::string suggestion(const std::vector<std::string>& known, const std::string& written);
