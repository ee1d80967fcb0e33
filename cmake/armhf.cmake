# Builds for a 32-bit ARM board with Debian's cross compiler and its armhf packages. Tests run under
# qemu's user mode, which finds the board's loader and libraries where the packages put them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # notes on a change of ABI in GCC 7, which is of no concern here
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/arm-linux-gnueabihf/pkgconfig:/usr/share/pkgconfig)
