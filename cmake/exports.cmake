# zeq_export_only(TARGET NAME...): the shared library TARGET exports what its own source files define under these
# demangled names (globs of the linker), with the tables and type_info of such classes, and nothing else. So it shares
# no template of the C++ library or of rapidjson with its host, which may have compiled them with other flags.
function(zeq_export_only target)
  foreach(name ${ARGN})
    string(APPEND patterns "    ${name}; *?for?${name}; *?thunk?to?${name};\n")
  endforeach()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${script} CONTENT "{\n  global: extern \"C++\" {\n${patterns}  };\n  local: *;\n};\n")
  target_link_options(${target} PRIVATE LINKER:--version-script=${script})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
