#pragma once

/// Marks what an application may see. Everything else is hidden: the libraries are built with
/// hidden visibility, and a class whose type crosses the library's border (thrown, down-cast or
/// subclassed by the application) must carry this mark, or its run-time type would differ on
/// either side.
#define NVRHW_API __attribute__((visibility("default")))
