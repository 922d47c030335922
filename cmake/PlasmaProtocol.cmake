# Lets `target` include NAME-client.h and NAME-protocol.c: one of Plasma's Wayland protocols, for a
# client.
function(vorda_plasma_protocol target name)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/protocol)
  set(source ${PLASMA_WAYLAND_PROTOCOLS_DIR}/${name}.xml)
  set(made ${folder}/${name}-client.h ${folder}/${name}-protocol.c)
  add_custom_command(OUTPUT ${made}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${WAYLAND_SCANNER} -s client-header ${source} ${folder}/${name}-client.h
    COMMAND ${WAYLAND_SCANNER} -s private-code ${source} ${folder}/${name}-protocol.c
    DEPENDS ${source})
  add_custom_target(${target}_${name} DEPENDS ${made})
  add_dependencies(${target} ${target}_${name})
  add_dependencies(generated ${target}_${name})
  target_include_directories(${target} SYSTEM PRIVATE ${folder})
  target_link_libraries(${target} PRIVATE PkgConfig::wayland)
endfunction()
