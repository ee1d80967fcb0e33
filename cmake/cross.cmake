# What the architectures share that are built for with Debian's cross compilers and packages; `triplet`
# names the compiler. Programs run under qemu's user mode, which finds the architecture's loader and
# libraries where the packages put them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${triplet}/pkgconfig:/usr/share/pkgconfig)
