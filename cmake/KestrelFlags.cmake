# The compiler and linker flags of every target, as one INTERFACE target that each of them links.
# kestrel_add_library / kestrel_add_executable / kestrel_add_test make sure that none forgets it.

option(KESTREL_WERROR "Treat warnings as errors" OFF)
set(KESTREL_SANITIZE "" CACHE STRING "Sanitizers for all targets, as in -fsanitize=")

add_library(kestrel_flags INTERFACE)
target_compile_features(kestrel_flags INTERFACE cxx_std_20)
target_compile_options(kestrel_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wnull-dereference -Wformat=2 -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
  $<$<BOOL:${KESTREL_WERROR}>:-Werror>
  -fstack-protector-strong)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  target_link_options(kestrel_flags INTERFACE
    -Wl,-z,relro,-z,now -Wl,-z,noexecstack -Wl,--as-needed)
endif()
if(CMAKE_BUILD_TYPE MATCHES "Rel" AND NOT KESTREL_SANITIZE)
  # Some compilers define it as soon as they optimise, and so do the flags of those who make
  # packages: their choice stays, since a second definition is a warning and may be the weaker.
  set(CMAKE_TRY_COMPILE_CONFIGURATION ${CMAKE_BUILD_TYPE})
  try_compile(is_not_fortified SOURCE_FROM_CONTENT is_not_fortified.cpp
    "#ifdef _FORTIFY_SOURCE\n#error\n#endif\nint main() {}\n" NO_CACHE)
  unset(CMAKE_TRY_COMPILE_CONFIGURATION)
  if(is_not_fortified)
    target_compile_definitions(kestrel_flags INTERFACE _FORTIFY_SOURCE=2)
  endif()
endif()
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_flags INTERFACE
    -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
# GCC 12 reports these inside the standard library once it is inlined under a sanitizer.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND KESTREL_SANITIZE)
  target_compile_options(kestrel_flags INTERFACE -Wno-maybe-uninitialized -Wno-null-dereference)
endif()

# kestrel_add_library(<name> SOURCES ... LINKS ...): the LINKS are what its files may include.
function(kestrel_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  if(arg_SOURCES)
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC kestrel_flags ${arg_LINKS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE kestrel_flags ${arg_LINKS})
  endif()
endfunction()

function(kestrel_add_executable name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE kestrel_flags ${arg_LINKS})
endfunction()
