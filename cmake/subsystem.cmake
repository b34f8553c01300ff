# zeq_subsystem(NAME [SOURCES ...] [HEADERS ...] [DEPENDS ...]): one folder of the library as an OBJECT target
# zeq_NAME. DEPENDS names the folders below it; nothing else may be included. All objects and headers are
# collected for the one library zeq_api.

add_library(zeq_build_flags INTERFACE)
target_compile_options(zeq_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual $<$<BOOL:${ZEQ_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(zeq_build_flags INTERFACE -Wno-restrict) # false alarms in std::string's operator+
endif()
if(ZEQ_SANITIZE)
  target_compile_options(zeq_build_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>) # false alarms in std::regex once instrumented
  target_link_options(zeq_build_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ZEQ_BUILD_FUZZ)
  target_compile_options(zeq_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# A shared library keeps its inline functions to itself, and calls its own functions without asking whether a program
# has replaced them. Nor has it unique symbols, with which it could not be unloaded. The sanitizers compare symbols
# between the library and a program, so with them everything stays visible.
set(ZEQ_HIDE_INTERNALS OFF)
if(BUILD_SHARED_LIBS AND NOT ZEQ_SANITIZE)
  set(ZEQ_HIDE_INTERNALS ON)
  set(hiding_flags -fvisibility-inlines-hidden -fno-semantic-interposition $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
endif()

define_property(GLOBAL PROPERTY ZEQ_SUBSYSTEMS)
define_property(GLOBAL PROPERTY ZEQ_HEADERS)

function(zeq_subsystem name)
  cmake_parse_arguments(arg "" "" "SOURCES;HEADERS;DEPENDS;LINK" ${ARGN})
  add_library(zeq_${name} OBJECT ${arg_SOURCES} ${arg_HEADERS})
  set_target_properties(zeq_${name} PROPERTIES LINKER_LANGUAGE CXX) # for a folder of headers only
  target_include_directories(zeq_${name} PUBLIC ${PROJECT_SOURCE_DIR}/mcad/src)
  target_compile_options(zeq_${name} PRIVATE ${hiding_flags})
  list(TRANSFORM arg_DEPENDS PREPEND zeq_)
  target_link_libraries(zeq_${name} PUBLIC ${arg_DEPENDS} PRIVATE zeq_build_flags ${arg_LINK})
  list(TRANSFORM arg_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY ZEQ_SUBSYSTEMS zeq_${name})
  set_property(GLOBAL APPEND PROPERTY ZEQ_HEADERS ${arg_HEADERS})
endfunction()
