# Compiler setup shared by every target: ccache when present, warnings as errors in our own code.
find_program(CALVORN_CCACHE ccache)
if(CALVORN_CCACHE)
  # Precompiled headers need these relaxations, or ccache never hits on a PCH build.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${CALVORN_CCACHE})
endif()

set(CALVORN_WARNINGS -Wall -Wextra -Werror -Wno-unused-parameter)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The engine's own idiom (a virtual overridden in part of a hierarchy) trips these.
  list(APPEND CALVORN_WARNINGS -Wno-overloaded-virtual)
endif()

# Third-party headers are system includes so their warnings never fail our build.
find_path(RAPIDJSON_INCLUDE_DIR rapidjson/reader.h REQUIRED)
