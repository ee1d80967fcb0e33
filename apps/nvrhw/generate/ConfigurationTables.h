#pragma once

#include <string>

/// The tables of docs/configuration.md, each between the marks that it has there.
std::string configurationTables();
