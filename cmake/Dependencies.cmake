# Where each library is found; docs/dependencies.md says what it is for.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(utf8proc REQUIRED IMPORTED_TARGET libutf8proc)
pkg_check_modules(re2 REQUIRED IMPORTED_TARGET re2)
pkg_check_modules(xxhash REQUIRED libxxhash)  # its header alone: nothing is linked

if(VORDA_PLATFORM STREQUAL "linux")
  pkg_check_modules(ncursesw REQUIRED IMPORTED_TARGET ncursesw)
  pkg_check_modules(systemd REQUIRED IMPORTED_TARGET libsystemd)

  # The desktop tray alone: a server gets along without it.
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
  pkg_check_modules(xcb QUIET IMPORTED_TARGET xcb)
  find_program(RSVG_CONVERT rsvg-convert)
  if(VORDA_TRAY AND NOT (Qt6_FOUND AND xcb_FOUND AND RSVG_CONVERT))
    message(STATUS "Qt 6, libxcb or rsvg-convert is not installed: no desktop tray "
                   "(`make run` installs them)")
    set(VORDA_TRAY OFF)
  endif()
  # What the tray tells Plasma's compositor of its window.
  find_package(PlasmaWaylandProtocols QUIET)
  pkg_check_modules(wayland QUIET IMPORTED_TARGET wayland-client)
  find_program(WAYLAND_SCANNER wayland-scanner)
  if(PlasmaWaylandProtocols_FOUND AND wayland_FOUND AND WAYLAND_SCANNER AND TARGET Qt6::GuiPrivate)
    set(VORDA_PLASMA_SHELL ON)
  elseif(VORDA_TRAY)
    message(STATUS "libwayland, Plasma's protocols or Qt's private headers are not installed: "
                   "on Plasma's Wayland the tray's menu is not beside the icon")
  endif()
else()
  set(VORDA_TRAY OFF)
endif()

# What measures the program's own cost.
if(BUILD_TESTING)
  find_package(benchmark QUIET)
  if(NOT benchmark_FOUND)
    message(STATUS "Google Benchmark is not installed: no bench (`make bench` installs it)")
  endif()
endif()

if(BUILD_TESTING)
  find_package(GTest)
  if(NOT GTest_FOUND)
    message(STATUS "GoogleTest is not installed: no tests (`make test` installs it)")
    set(BUILD_TESTING OFF)
  endif()
endif()
