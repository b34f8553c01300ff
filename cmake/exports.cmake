# zeq_export_only(TARGET SYMBOL...): the shared library TARGET exports what its own source files define under these
# names (globs of mangled ones, without their "_Z"), and nothing else. So it shares no template of the C++ library or
# of rapidjson with its host, which may have compiled them with other flags.
function(zeq_export_only target)
  list(JOIN ARGN "; _Z" symbols)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${script} CONTENT "{ global: _Z${symbols}; local: *; };\n")
  target_link_options(${target} PRIVATE LINKER:--version-script=${script})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()

# zeq_symbols_of(VARIABLE NAME...): the symbols of these classes and namespaces, each with its length before it:
# functions and members, tables and type_info, thunks.
function(zeq_symbols_of variable)
  foreach(name ${ARGN})
    list(APPEND symbols N${name}* NK${name}* T?${name}* T?N${name}* GVN${name}* Th*_N${name}* Th*_NK${name}*)
  endforeach()
  set(${variable} ${symbols} PARENT_SCOPE)
endfunction()
