#pragma once

/// Marks what an application may see. Everything else is hidden: the libraries are built with
/// hidden visibility, and a class whose type crosses the library's border (thrown, down-cast or
/// subclassed by the application) must carry this mark, or its run-time type would differ on
/// either side.
///
/// The tag goes into the name of every symbol, as in `GPIO[abi:nvrhw]::init()`. An application may
/// therefore have global classes and functions of the same names in sources that do not include
/// ours: neither side ever calls the other's. The first declaration of a class carries the mark,
/// and no other but the definition: a header includes what it needs, in place of declaring the
/// classes of another header. A specialization has it from its template.
#define NVRHW_API __attribute__((visibility("default"), abi_tag("nvrhw")))
