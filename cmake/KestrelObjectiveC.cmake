# Objective-C++ with ARC, for targets of nothing else.
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)

# kestrel_use_arc(<name>): all sources of the target must be .mm. No generator expression asks for
# the language, since the Xcode generator ignores those; its attributes show the option there.
function(kestrel_use_arc name)
  get_target_property(sources ${name} SOURCES)
  foreach(source IN LISTS sources)
    if(source MATCHES "\\.(c|cpp)$")
      message(FATAL_ERROR "${name}: ${source} is not Objective-C++")
    endif()
  endforeach()
  target_compile_options(${name} PRIVATE -fobjc-arc -fobjc-weak)
  set_target_properties(${name} PROPERTIES
    XCODE_ATTRIBUTE_CLANG_ENABLE_OBJC_ARC YES
    XCODE_ATTRIBUTE_CLANG_ENABLE_OBJC_WEAK YES)
endfunction()
