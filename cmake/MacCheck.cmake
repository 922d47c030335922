# Builds for a Mac on Linux, to see whether everything compiles and links: `make mac-check`. It needs
# clang, lld and a macOS SDK whose place is in VORDA_SDK; VORDA_MAC_ARCHITECTURE is
# arm64 or x86_64, VORDA_TOOLS the folder of clang's llvm-ar and so on.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORDA_SDK VORDA_MAC_ARCHITECTURE
    VORDA_TOOLS)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${VORDA_MAC_ARCHITECTURE})
set(CMAKE_OSX_ARCHITECTURES ${VORDA_MAC_ARCHITECTURE})
set(CMAKE_OSX_SYSROOT ${VORDA_SDK})
find_program(VORDA_CLANG clang++ REQUIRED)
set(CMAKE_CXX_COMPILER ${VORDA_CLANG})
set(CMAKE_OBJCXX_COMPILER ${VORDA_CLANG})
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${VORDA_MAC_ARCHITECTURE}-apple-macosx13.0)
endforeach()
# The SDK's, where clang would take a libc++ that is installed beside it.
set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -nostdinc++ -isystem ${VORDA_SDK}/usr/include/c++/v1")
# Messages and selectors that nobody declares are errors here.
set(CMAKE_OBJCXX_FLAGS_INIT
    "${CMAKE_CXX_FLAGS_INIT} -Wundeclared-selector -Werror=objc-method-access")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld -stdlib=libc++")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

foreach(tool AR RANLIB INSTALL_NAME_TOOL STRIP)
  string(TOLOWER ${tool} name)
  string(REPLACE _ - name ${name})
  set(CMAKE_${tool} ${VORDA_TOOLS}/llvm-${name})
endforeach()
