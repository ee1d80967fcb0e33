# Builds for a 32-bit ARM board.
set(triplet arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # notes on a change of ABI in GCC 7, which is of no concern here
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
