# `make package`: vorda, for terminals and servers, and vorda-tray, which depends on it.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tells what the machine's memory is doing")
set(CPACK_PACKAGE_VENDOR "${VORDA_MAKER_FULL_NAME}")
set(CPACK_PACKAGE_CONTACT "${VORDA_CONTACT}")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL terminal vorda_documents)
if(VORDA_TRAY)
  list(APPEND CPACK_COMPONENTS_ALL tray_program tray_documents)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# A package fits the system that it was built on. Its name says which, so that the one of the next
# system counts as newer: "1~deb12" comes before "1~deb13".
cmake_host_system_information(RESULT system QUERY DISTRIB_INFO)
string(REPLACE "debian" "deb" system "${system_ID}${system_VERSION_ID}")
set(CPACK_DEBIAN_PACKAGE_RELEASE "1~${system}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_VORDA_PACKAGE_NAME vorda)
set(CPACK_DEBIAN_VORDA_DESCRIPTION "Lists who holds the memory, in a terminal or as plain text, and recognises
model servers, training jobs and agents among the running processes. Quits
what is yours; stops and starts the services of your own service manager.")
set(CPACK_DEBIAN_VORDA_PACKAGE_SUGGESTS vorda-tray)

set(CPACK_DEBIAN_TRAY_PACKAGE_NAME vorda-tray)
set(CPACK_DEBIAN_TRAY_DESCRIPTION "An icon in the system tray with a menu of who holds the memory: model
servers, training jobs, agents and the largest programs, each in a colour
that stays. Brings the desktop's half of vorda.")
set(CPACK_DEBIAN_TRAY_PACKAGE_DEPENDS "vorda (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_TRAY_PACKAGE_RECOMMENDS "qt6-wayland, qt6-gtk-platformtheme")
set(deb_folder ${CMAKE_CURRENT_BINARY_DIR}/deb)
file(WRITE ${deb_folder}/conffiles "/etc/xdg/autostart/vorda.desktop\n")
set(CPACK_DEBIAN_TRAY_PACKAGE_CONTROL_EXTRA ${deb_folder}/conffiles)

# Debian's own forms of the licence and the changelog.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE license)
string(REGEX REPLACE "^.*\n\n(Permission)" "\\1" license "${license}")
string(REGEX REPLACE "\n+$" "" license "${license}")
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n" "\n " VORDA_LICENSE_PARAGRAPHS " ${license}")
configure_file(copyright.in ${deb_folder}/copyright @ONLY)

execute_process(COMMAND date --utc --rfc-email --date=${VORDA_RELEASE_DATE}
                OUTPUT_VARIABLE VORDA_RELEASE_TIME OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
# Every file in a package is as old as the release.
execute_process(COMMAND date --utc +%s --date=${VORDA_RELEASE_DATE}
                OUTPUT_VARIABLE release_time OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
file(WRITE ${deb_folder}/epoch.cmake "set(ENV{SOURCE_DATE_EPOCH} ${release_time})\n")
set(CPACK_PROJECT_CONFIG_FILE ${deb_folder}/epoch.cmake)
configure_file(changelog.in ${deb_folder}/changelog.Debian @ONLY)
compressed(${deb_folder}/changelog.Debian deb/changelog.Debian)
compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md deb/changelog)
add_custom_target(deb_documents DEPENDS deb/changelog.Debian.gz deb/changelog.gz)
add_dependencies(programs deb_documents)

function(install_deb_documents package component)
  install(FILES ${deb_folder}/copyright ${deb_folder}/changelog.gz ${deb_folder}/changelog.Debian.gz
          DESTINATION share/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()
install_deb_documents(vorda vorda_documents)
install_deb_documents(vorda-tray tray_documents)

include(CPack)
cpack_add_component_group(vorda)
cpack_add_component_group(tray)
cpack_add_component(terminal GROUP vorda)
cpack_add_component(vorda_documents GROUP vorda)
cpack_add_component(tray_documents GROUP tray)
cpack_add_component(tray_program GROUP tray)
