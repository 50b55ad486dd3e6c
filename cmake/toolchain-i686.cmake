# 32-bit x86 Linux with the host's multilib GCC (Debian: g++-multilib).
#   cmake -B build-32 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-i686.cmake
# An x86-64 host runs the results directly, so tests need no emulator.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
# SSE2 for scalar float math everywhere, tests and tools included, never x87
# excess precision: reference values computed in tests must round like the library.
set(CMAKE_C_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
foreach(kind EXE_LINKER SHARED_LINKER MODULE_LINKER)
  set(CMAKE_${kind}_FLAGS_INIT "-m32")
endforeach()

# Multilib runtimes live in lib32; keep find_library and find_package away
# from the host's x86-64 multiarch directory.
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set_property(GLOBAL PROPERTY FIND_LIBRARY_USE_LIB32_PATHS TRUE)
set_property(GLOBAL PROPERTY FIND_LIBRARY_USE_LIB64_PATHS FALSE)
