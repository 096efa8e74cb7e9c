# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (the POSIX-threads flavour,
# which has std::thread and std::mutex). The runtime is linked statically, so that the
# executables and DLLs need nothing beside them but each other.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# A host DLL exports all its own symbols, as a shared object does; --exclude-libs keeps
# the statically linked runtime's out of its export table, where they would clash in the
# DLLs and programs linked against it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static -Wl,--exclude-libs,ALL")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static -Wl,--exclude-libs,ALL")
# The tests run the Windows programs under Wine, with the address space laid out the same
# every time. Debian's Wine loader starts without the preloader that would hold the
# Windows program's fixed addresses free; with the layout randomised, now and then
# something already lies where the shared user data page must go (0x7ffe0000), and the
# program ends with status 1 before it runs ("failed to map the shared user data", an
# error WINEDEBUG=-all hides).
set(CMAKE_CROSSCOMPILING_EMULATOR setarch -R wine)
