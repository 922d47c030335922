# The desktop's half: the tray program, and all by which a desktop knows the program.

install(TARGETS vorda-tray DESTINATION ${VORDA_PROGRAM_FOLDER} COMPONENT tray_program)

# The entry names the program by its path, which is known once it is known where to.
install(CODE "
  set(VORDA_TRAY_PROGRAM \"\${CMAKE_INSTALL_PREFIX}/${VORDA_PROGRAM_FOLDER}/vorda-tray\")
  configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/vorda.desktop.in\"
                 \"${CMAKE_CURRENT_BINARY_DIR}/vorda.desktop\" @ONLY)"
  COMPONENT tray_program)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vorda.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT tray_program)

# Below /usr, configuration goes to /etc.
install(CODE "
  string(REGEX REPLACE \"^/usr$\" \"\" above \"\${CMAKE_INSTALL_PREFIX}\")
  file(INSTALL \"${CMAKE_CURRENT_SOURCE_DIR}/autostart.desktop\"
       DESTINATION \"\${above}/etc/xdg/autostart\" RENAME vorda.desktop)"
  COMPONENT tray_program)

configure_file(com.halvek.vorda.metainfo.xml.in com.halvek.vorda.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/com.halvek.vorda.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT tray_program)

add_dependencies(programs pictures)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/badge.svg
        DESTINATION ${icons}/scalable/apps RENAME vorda.svg COMPONENT tray_program)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/badge-symbolic.svg
        DESTINATION ${icons}/symbolic/apps RENAME vorda-symbolic.svg COMPONENT tray_program)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${PICTURES_DIR}/badge-${size}.png
          DESTINATION ${icons}/${size}x${size}/apps RENAME vorda.png COMPONENT tray_program)
endforeach()
