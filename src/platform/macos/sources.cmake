# vorda_platform on macOS; the tests on Linux build the same files.
set(MACOS_PLATFORM_SOURCES
  applications.mm
  argument_block.cpp
  foundation_text.mm
  gpus.cpp
  heap.cpp
  launch_agent_file.mm
  launchctl_list.cpp
  launch_agents.mm
  launchctl.cpp
  launchctl_attempts.cpp
  launchctl_inquiry.cpp
  mapped_memory.cpp
  memory.cpp
  pipe_reader.cpp
  process_identity.cpp
  process_record.cpp
  processes.cpp
  signals.cpp
  words.cpp
  ../posix/argument_list.cpp
  ../posix/fingerprint.cpp
  ../posix/model_manifests.cpp
  ../posix/users.cpp
)
list(TRANSFORM MACOS_PLATFORM_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
