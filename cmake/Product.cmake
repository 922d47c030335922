# The words that belong to the maker of this build, not to the program.

set(VORDA_MAKER_FULL_NAME "Halvek Software" CACHE STRING "The maker's full name, as About shows it")
set(VORDA_COPYRIGHT "Copyright © 2026 Halvek Software. All rights reserved." CACHE STRING
    "The copyright line, as About and Settings show it")
set(VORDA_CONTACT "Halvek Software <vorda@halvek.example>" CACHE STRING
    "Whom packages name as their maintainer")
set(VORDA_REPOSITORY https://github.com/halvek/vorda CACHE STRING "Where the source is kept")
set(VORDA_MAC_CATEGORY public.app-category.utilities CACHE STRING
    "Where macOS files the program among others")
set(VORDA_BUNDLE_IDENTIFIER com.halvek.vorda CACHE STRING "What macOS tells the program by")

# As XML has them.
foreach(name VORDA_MAKER_FULL_NAME VORDA_COPYRIGHT)
  string(REPLACE "&" "&amp;" escaped "${${name}}")
  string(REPLACE "<" "&lt;" ${name}_XML "${escaped}")
endforeach()

# What Homebrew calls the oldest system that the program runs on.
set(mac_names_13 ventura)
set(mac_names_14 sonoma)
set(mac_names_15 sequoia)
string(REGEX MATCH "^[0-9]+" oldest_mac "${CMAKE_OSX_DEPLOYMENT_TARGET}")
if(NOT mac_names_${oldest_mac})
  message(FATAL_ERROR "Homebrew's name of macOS ${oldest_mac} is missing in cmake/Product.cmake")
endif()
set(VORDA_OLDEST_MAC ${mac_names_${oldest_mac}})

# The version stands in the top CMakeLists.txt; the changelog knows when it was released.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md release REGEX "^## \\[${PROJECT_VERSION}\\] - ")
if(NOT release MATCHES "- ([0-9-]+)$")
  message(FATAL_ERROR "CHANGELOG.md does not say when version ${PROJECT_VERSION} was released")
endif()
set(VORDA_RELEASE_DATE ${CMAKE_MATCH_1})
