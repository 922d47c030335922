# How every target of this project is compiled.

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12)
  message(FATAL_ERROR "vorda needs gcc 12 or later (found ${CMAKE_CXX_COMPILER_VERSION})")
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14)
  message(FATAL_ERROR "vorda needs clang 14 or later (found ${CMAKE_CXX_COMPILER_VERSION})")
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# What is handed out is the same to the byte wherever it was built. The last one that fits counts.
if(NOT VORDA_COVERAGE)
  add_compile_options(
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>"
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>")
endif()
# The number would be made of the debug information too, in which a compiler cache may write paths
# in another way.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  add_link_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:LINKER:--build-id=none>")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
                    -Woverloaded-virtual
                    # Values are made by naming the fields that differ from their defaults.
                    -Wno-missing-field-initializers)
# With -O3 that version takes "text" + std::string() for a copy onto itself.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options($<$<AND:$<CONFIG:Release>,$<COMPILE_LANGUAGE:CXX>>:-Wno-restrict>)
endif()
