# Libraries to link statically into an application that runs on the oldest macOS that the project
# names.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../../../CMakeLists.txt line
     REGEX "^set\\(CMAKE_OSX_DEPLOYMENT_TARGET ")
string(REGEX MATCH "[0-9.]+" VCPKG_OSX_DEPLOYMENT_TARGET "${line}")
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE static)
set(VCPKG_BUILD_TYPE release)
set(VCPKG_CMAKE_SYSTEM_NAME Darwin)
