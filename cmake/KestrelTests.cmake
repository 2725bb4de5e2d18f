# kestrel_add_test(<name> SOURCES ... LINKS ... [ENVIRONMENT ...]): a GoogleTest program whose
# tests ctest lists one by one. A program without a test in it is an error.
find_package(GTest REQUIRED)
include(GoogleTest)

function(kestrel_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;ENVIRONMENT;LABELS")
  kestrel_add_executable(${name} SOURCES ${arg_SOURCES} LINKS ${arg_LINKS} GTest::gmock_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  set(properties TIMEOUT 120)
  if(arg_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT "${arg_ENVIRONMENT}")
  endif()
  if(arg_LABELS)
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 30 PROPERTIES ${properties})
endfunction()
