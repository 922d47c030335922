# The icon that a Mac's Finder shows: each size at one and at two pixels a point.

set(iconset ${CMAKE_CURRENT_BINARY_DIR}/Vorda.iconset)
file(MAKE_DIRECTORY ${iconset})
foreach(size 16 32 128 256 512)
  math(EXPR doubled "2 * ${size}")
  render(badge Vorda.iconset/icon_${size}x${size} ${size})
  render(badge Vorda.iconset/icon_${size}x${size}@2x ${doubled})
endforeach()

set(icon ${CMAKE_CURRENT_BINARY_DIR}/Vorda.icns)
add_custom_command(
  OUTPUT ${icon}
  COMMAND iconutil --convert icns --output ${icon} ${iconset}
  DEPENDS ${pictures}
  COMMENT "Joining the icon's sizes"
  VERBATIM)
list(APPEND pictures ${icon})

# The badge of alerts: AppKit pairs a file that is loaded by its place with no larger neighbour, so
# the one file is large enough for every screen.
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/bundle)
render(badge bundle/HalvekBadge 192)

set(BUNDLE_RESOURCES ${icon} ${CMAKE_CURRENT_BINARY_DIR}/bundle/HalvekBadge.png CACHE INTERNAL "")
