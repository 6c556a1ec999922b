# Compiles through ccache when the machine has it. The paths it keys on are made relative to the
# source tree, and the language of messages left out, so that a second clone elsewhere takes its
# objects from the first one's builds. A launcher given on the command line stays.
if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(CARNETEL_CCACHE ccache)
  mark_as_advanced(CARNETEL_CCACHE)
  if(CARNETEL_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=locale,pch_defines,time_macros
      ${CARNETEL_CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
  endif()
endif()
