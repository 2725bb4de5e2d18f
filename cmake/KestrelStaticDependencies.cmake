# simdjson and utf8proc as static libraries, under the names that the core links: a bundle for the
# Mac brings everything that the system lacks inside its executable.
option(KESTREL_FETCH_DEPENDENCIES "Build simdjson and utf8proc from their sources" ON)

if(KESTREL_FETCH_DEPENDENCIES)
  # For all processors of the bundle; a package manager's libraries are for one. The versions and
  # the archives are the ones that Debian 12 builds its packages from.
  include(FetchContent)
  set(CMAKE_POLICY_VERSION_MINIMUM 3.5) # CMake 4 refuses what the older of the two asks for
  set(BUILD_SHARED_LIBS OFF)
  set(SIMDJSON_DEVELOPER_MODE OFF)
  FetchContent_Declare(simdjson
    URL https://github.com/simdjson/simdjson/archive/refs/tags/v3.0.1.tar.gz
    URL_HASH SHA256=156b1bc5eb0561b2bd166b46d191fd3d95a3e709cc63761477d3b7aec2b6e9ed)
  FetchContent_Declare(utf8proc
    URL https://github.com/JuliaStrings/utf8proc/archive/refs/tags/v2.8.0.tar.gz
    URL_HASH SHA256=a0a60a79fe6f6d54e7d411facbfcc867a6e198608f2cd992490e46f04b1bcecc)
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
