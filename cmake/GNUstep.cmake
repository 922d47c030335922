# What the macOS edition is built with on Linux, for its tests: clang for Objective-C++, and
# GNUstep's Foundation. Sets GNUSTEP_FOUND, and makes the target GNUstep::Base.

find_program(OBJCXX_COMPILER NAMES clang++ clang++-19 clang++-18 clang++-17 clang++-16 clang++-15
                                   clang++-14)
find_path(GNUSTEP_INCLUDE_DIR Foundation/Foundation.h PATH_SUFFIXES GNUstep)
find_library(GNUSTEP_BASE_LIBRARY gnustep-base)
# The runtime's headers and library stand in gcc's own folders.
execute_process(COMMAND gcc -print-file-name=include OUTPUT_VARIABLE GCC_INCLUDE_DIR
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
execute_process(COMMAND gcc -print-file-name=libobjc.so OUTPUT_VARIABLE OBJC_LIBRARY
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)

if(OBJCXX_COMPILER AND GNUSTEP_INCLUDE_DIR AND GNUSTEP_BASE_LIBRARY
   AND EXISTS "${GCC_INCLUDE_DIR}/objc/objc.h" AND EXISTS "${OBJC_LIBRARY}")
  set(GNUSTEP_FOUND ON)
else()
  set(GNUSTEP_FOUND OFF)
  return()
endif()

add_library(GNUstep::Base INTERFACE IMPORTED)
target_include_directories(GNUstep::Base SYSTEM INTERFACE ${GNUSTEP_INCLUDE_DIR})
target_compile_definitions(GNUstep::Base INTERFACE GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_RUNTIME=1
                                                   _NATIVE_OBJC_EXCEPTIONS)
target_compile_options(GNUstep::Base INTERFACE
  "$<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-runtime=gcc;-fconstant-string-class=NSConstantString>"
  "$<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-exceptions;-fexceptions;SHELL:-idirafter ${GCC_INCLUDE_DIR}>")
target_link_libraries(GNUstep::Base INTERFACE ${GNUSTEP_BASE_LIBRARY} ${OBJC_LIBRARY})
