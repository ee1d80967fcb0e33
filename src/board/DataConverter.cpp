#include "platform/System.h"

void DataConverter::convert(const int& value, std::string& text) { text = std::to_string(value); }
