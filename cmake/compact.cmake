# What makes the libraries small without making them slow, for the builds that a board gets.
include(CheckIPOSupported)
check_ipo_supported(RESULT ipo OUTPUT ipo_fault LANGUAGES CXX)
if(ipo)
    set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
else() # clang without its own linker
    message(STATUS "no link-time optimisation: the libraries get larger")
endif()
# Nobody replaces our functions by others of the same name, so calls among them are direct.
add_compile_options(-ffunction-sections -fdata-sections -fno-semantic-interposition)
add_link_options(-ffunction-sections -fdata-sections -fno-semantic-interposition
    -Wl,--gc-sections,-Bsymbolic-functions,-O1,--as-needed)
