# What a compositor and a program say to each other, as C made from its description.
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
pkg_get_variable(WAYLAND_PROTOCOLS wayland-protocols pkgdatadir)
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)

# kestrel_add_wayland_protocol(NAME PROTOCOL): a library with the client's side of one of the
# protocols that wayland-protocols brings, by its path there without the suffix.
function(kestrel_add_wayland_protocol name protocol)
  set(description ${WAYLAND_PROTOCOLS}/${protocol}.xml)
  cmake_path(GET protocol FILENAME file)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/generated)
  set(header ${folder}/${file}-client-protocol.h)
  set(code ${folder}/${file}-protocol.c)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${header}
    COMMAND ${WAYLAND_SCANNER} client-header ${description} ${header}
    DEPENDS ${description} VERBATIM)
  add_custom_command(OUTPUT ${code}
    COMMAND ${WAYLAND_SCANNER} private-code ${description} ${code}
    DEPENDS ${description} VERBATIM)
  add_library(${name} STATIC ${code} ${header})
  target_include_directories(${name} SYSTEM PUBLIC ${folder})
  target_link_libraries(${name} PUBLIC PkgConfig::WAYLAND)
endfunction()
