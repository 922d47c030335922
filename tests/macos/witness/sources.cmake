# What both kinds of AppKit are asked.
set(WITNESS_SOURCES
  alert_test.mm
  drawing_test.mm
  menu_test.mm
  settings_test.mm
  witness.mm
)
list(TRANSFORM WITNESS_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
