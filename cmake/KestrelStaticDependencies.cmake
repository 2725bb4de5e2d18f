# simdjson and utf8proc as static libraries, under the names that the core links: a bundle for the
# Mac brings everything that the system lacks inside its executable.
option(KESTREL_FETCH_DEPENDENCIES "Build simdjson and utf8proc from their sources" ON)

if(KESTREL_FETCH_DEPENDENCIES)
  # For all processors of the bundle; a package manager's libraries are for one. The versions are
  # the ones that everything is tested with on Debian 12.
  include(FetchContent)
  set(CMAKE_POLICY_VERSION_MINIMUM 3.5) # CMake 4 refuses what the older of the two asks for
  set(BUILD_SHARED_LIBS OFF)
  set(SIMDJSON_DEVELOPER_MODE OFF)
  FetchContent_Declare(simdjson
    GIT_REPOSITORY https://github.com/simdjson/simdjson.git
    GIT_TAG v3.0.1
    GIT_SHALLOW ON)
  FetchContent_Declare(utf8proc
    GIT_REPOSITORY https://github.com/JuliaStrings/utf8proc.git
    GIT_TAG v2.8.0
    GIT_SHALLOW ON)
  FetchContent_MakeAvailable(simdjson utf8proc)
  set(kestrel_simdjson simdjson)
  set(kestrel_utf8proc utf8proc)
  foreach(target IN ITEMS simdjson utf8proc)
    # Their warnings are not ours.
    get_target_property(directories ${target} INTERFACE_INCLUDE_DIRECTORIES)
    set_target_properties(${target} PROPERTIES
      INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${directories}")
  endforeach()
else()
  # What a package manager has installed; tests need no more.
  foreach(name IN ITEMS simdjson utf8proc)
    find_library(${name}_LIBRARY NAMES ${CMAKE_STATIC_LIBRARY_PREFIX}${name}.a ${name} REQUIRED)
    find_path(${name}_INCLUDE_DIRECTORY ${name}.h REQUIRED)
    add_library(kestrel_${name} UNKNOWN IMPORTED GLOBAL)
    set_target_properties(kestrel_${name} PROPERTIES
      IMPORTED_LOCATION ${${name}_LIBRARY}
      INTERFACE_INCLUDE_DIRECTORIES ${${name}_INCLUDE_DIRECTORY})
    set(kestrel_${name} kestrel_${name})
  endforeach()
endif()

if(NOT TARGET simdjson::simdjson)
  add_library(simdjson::simdjson INTERFACE IMPORTED GLOBAL)
  target_link_libraries(simdjson::simdjson INTERFACE ${kestrel_simdjson})
endif()
add_library(PkgConfig::UTF8PROC INTERFACE IMPORTED GLOBAL)
target_link_libraries(PkgConfig::UTF8PROC INTERFACE ${kestrel_utf8proc})
target_compile_definitions(PkgConfig::UTF8PROC INTERFACE UTF8PROC_STATIC)
