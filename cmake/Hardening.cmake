# What makes a defect end in a stop instead of in somebody else's hands; and the sanitizers,
# which find defects before that. tests/hardening reads the built programs for it.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# The standard library checks bounds and preconditions in every build: libstdc++, and libc++ in the
# way of its version, of which a wrong one is an error in some.
include(CheckCXXSourceCompiles)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
check_cxx_source_compiles("#include <version>
#ifndef _LIBCPP_VERSION
#error another library
#endif
int main() {}" VORDA_HAS_LIBCXX)
check_cxx_source_compiles("#include <version>
int mode = _LIBCPP_HARDENING_MODE_EXTENSIVE;
int main() {}" VORDA_HAS_LIBCXX_HARDENING)
if(VORDA_HAS_LIBCXX_HARDENING)
  add_compile_definitions(_LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_EXTENSIVE)
elseif(VORDA_HAS_LIBCXX)
  add_compile_definitions(_LIBCPP_ENABLE_ASSERTIONS=1)
endif()

check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

function(vorda_add_option_if_known option variable)
  set(CMAKE_REQUIRED_FLAGS -Werror)  # some compilers only warn of an option that means nothing
  check_cxx_compiler_flag(${option} ${variable})
  if(${variable})
    add_compile_options(${option})
  endif()
endfunction()

vorda_add_option_if_known(-fstack-protector-strong VORDA_HAS_STACK_PROTECTOR)
vorda_add_option_if_known(-fstack-clash-protection VORDA_HAS_STACK_CLASH_PROTECTION)
vorda_add_option_if_known(-fcf-protection VORDA_HAS_CF_PROTECTION)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()

# Level 3 also checks buffers whose size is only known while running. Every level needs
# optimisation, and none goes with the address sanitizer, which intercepts the same calls.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(VORDA_FORTIFY_LEVEL 3)
else()
  check_cxx_source_compiles(
    "int main(int, char** argv) { return __builtin_dynamic_object_size(argv, 0) == 0; }"
    VORDA_HAS_DYNAMIC_OBJECT_SIZE)
  set(VORDA_FORTIFY_LEVEL $<IF:$<BOOL:${VORDA_HAS_DYNAMIC_OBJECT_SIZE}>,3,2>)
endif()
if(NOT VORDA_SANITIZE)
  add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>"
                      "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=${VORDA_FORTIFY_LEVEL}>")
endif()

if(VORDA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # Neither gcc nor Apple's clang has fuzzers.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    set(VORDA_FUZZERS ON)
  endif()
endif()

if(VORDA_COVERAGE)
  # Not Objective-C++: clang compiles that where gcc compiles the rest, and counts otherwise.
  add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:--coverage;-fprofile-update=atomic>")
  add_link_options(--coverage)
endif()
