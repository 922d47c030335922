# Vorda.app: the program with what stands beside it in its bundle.
include(${CMAKE_CURRENT_LIST_DIR}/sources_macos.cmake)
configure_file(${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in Info.plist @ONLY)

add_executable(vorda MACOSX_BUNDLE main_macos.mm ${MACOS_SHELL_SOURCES} ${BUNDLE_RESOURCES})
set_source_files_properties(${BUNDLE_RESOURCES} PROPERTIES
  GENERATED ON
  MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(vorda PROPERTIES
  OUTPUT_NAME Vorda
  MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_BINARY_DIR}/Info.plist)
target_compile_options(vorda PRIVATE -fno-objc-arc)
target_link_libraries(vorda PRIVATE vorda_appkit)
if(TARGET pictures)
  add_dependencies(vorda pictures)
endif()
