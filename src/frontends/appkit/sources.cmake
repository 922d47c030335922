# The menu bar item of macOS; the tests on Linux build the same files.
set(APPKIT_FRONT_END_SOURCES
  alert_panel.mm
  app_kit_canvas.mm
  app_kit_front_end.mm
  main_menu.mm
  main_queue_work.mm
  menu_items.mm
  menu_target.mm
  pictures.mm
  represented_object.mm
  run_loop_work.mm
  settings_window.mm
  shared_application.mm
  strip_view.mm
)
list(TRANSFORM APPKIT_FRONT_END_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
