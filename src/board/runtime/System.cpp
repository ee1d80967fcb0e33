#include "platform/System.h"

#include <string>
#include <unistd.h>

int SystemHelper::getPid() { return static_cast<int>(getpid()); }

void DataConverter::convert(const int& value, std::string& text) { text = std::to_string(value); }
