# The shell of the program on macOS; the tests on Linux build the same files.
set(MACOS_SHELL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/app_delegate_macos.mm
  ${CMAKE_CURRENT_LIST_DIR}/vorda_app_macos.mm
)
