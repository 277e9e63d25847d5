# Builds for Windows with Debian's MinGW-w64 (g++-mingw-w64-x86-64-posix) and runs the tests under Wine (wine64).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# The posix flavour has std::thread and std::mutex.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
# Without the toolchain's own libraries beside it a program starts on any Windows, and under Wine.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A Windows of its own in the build folder, silent, without a display, without offers to download more and without
# entries in the menus of whoever runs the tests.
find_program(KV_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(KV_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR env LC_ALL=C.UTF-8 "WINEPREFIX=${CMAKE_BINARY_DIR}/wine" WINEDEBUG=-all
    "WINEDLLOVERRIDES=mscoree,mshtml,winemenubuilder.exe=" "${KV_WINE}")
endif()
