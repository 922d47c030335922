# Several sources of one folder are read by the compiler in one go, so that what they all include
# (the standard library, Qt, GoogleTest) is read once: a whole build takes a third of the time. So
# what stands in a folder's anonymous namespaces has a name of its own in that folder. The presets
# debug and lint compile each source alone.

# Ten at a time take the compiler up to 0.7 GiB, twenty up to 1.3 GiB: too much where users build,
# on machines of any size.
if(NOT DEFINED CMAKE_UNITY_BUILD_BATCH_SIZE)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 10)
endif()

# vorda_join_sources(FOLDER): those of all targets in FOLDER and below it.
function(vorda_join_sources folder)
  get_property(below DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder ${below})
    vorda_join_sources(${subfolder})
  endforeach()
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(sources ${target} SOURCES)
    get_target_property(type ${target} TYPE)
    if(sources AND NOT type STREQUAL "UTILITY")
      vorda_join_sources_of(${target} ${sources})
    endif()
  endforeach()
endfunction()

# Before 3.29 CMake joins no Objective-C++, so that is done here; but not on a Mac, where AppKit's own
# headers have not seen it.
function(vorda_join_sources_of target)
  get_target_property(folder ${target} SOURCE_DIR)
  get_target_property(below ${target} BINARY_DIR)
  foreach(source ${ARGN})
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder} NORMALIZE)
    cmake_path(GET source PARENT_PATH group)
    # The same wherever the tree lies: the name becomes part of what is built.
    cmake_path(IS_PREFIX PROJECT_BINARY_DIR "${group}" is_made)
    if(is_made)
      cmake_path(RELATIVE_PATH group BASE_DIRECTORY ${PROJECT_BINARY_DIR})
    else()
      cmake_path(RELATIVE_PATH group BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    endif()
    # clang's analyzer looks into what a source includes where "UnifiedSource" is part of its name.
    string(MAKE_C_IDENTIFIER "UnifiedSource_${group}" group)
    get_source_file_property(language ${source} TARGET_DIRECTORY ${target} LANGUAGE)
    if(language STREQUAL "OBJCXX")
      string(APPEND group _objcxx)
    endif()
    math(EXPR count_${group} "0${count_${group}} + 1")
    math(EXPR part "(${count_${group}} - 1) / ${CMAKE_UNITY_BUILD_BATCH_SIZE}")
    if(NOT language STREQUAL "OBJCXX")
      set_property(SOURCE ${source} TARGET_DIRECTORY ${target}
                   PROPERTY UNITY_GROUP "${group}_${part}")
    elseif(NOT APPLE)
      set_property(SOURCE ${source} TARGET_DIRECTORY ${target} PROPERTY HEADER_FILE_ONLY ON)
      set(joined ${below}/CMakeFiles/${target}.dir/Unity/unity_${group}_${part}.mm)
      list(APPEND all_joined ${joined})
      string(APPEND text_of_${joined} "#include \"${source}\"\n")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES all_joined)
  foreach(joined ${all_joined})
    file(CONFIGURE OUTPUT ${joined} CONTENT "${text_of_${joined}}")
  endforeach()
  target_sources(${target} PRIVATE ${all_joined})
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()
