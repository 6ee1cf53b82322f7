# Warnings, sanitizers and coverage for every target of the project.
add_library(k520_options INTERFACE)
target_compile_options(k520_options INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler takes the string concatenations of its own library for overlapping copies.
  target_compile_options(k520_options INTERFACE -Wno-restrict)
endif()
# The standard library checks its own subscripts in builds for work.
target_compile_definitions(k520_options INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
if(K520_WERROR)
  target_compile_options(k520_options INTERFACE -Werror)
endif()
if(K520_SANITIZE)
  target_compile_options(k520_options INTERFACE -fsanitize=${K520_SANITIZE}
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(k520_options INTERFACE -fsanitize=${K520_SANITIZE})
endif()
if(K520_COVERAGE)
  target_compile_options(k520_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(k520_options INTERFACE --coverage)
endif()

# k520_precompile(TARGET (HEADER... | REUSE_FROM OTHER)): saves more than a third of a build from
# clean. It is off at the desk, where a missing include shall be noticed and ccache does more.
function(k520_precompile target)
  if(K520_PRECOMPILE)
    target_precompile_headers(${target} ${ARGN})
  endif()
endfunction()

# Compiling the same text twice costs nothing where ccache works; without a folder to write to it
# fails instead of standing aside.
find_program(K520_CCACHE ccache)
mark_as_advanced(K520_CCACHE)
if(K520_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  execute_process(
    COMMAND ${K520_CCACHE} ${CMAKE_CXX_COMPILER} -x c++ -c /dev/null
            -o ${PROJECT_BINARY_DIR}/CMakeFiles/ccache-trial.o
    RESULT_VARIABLE trial OUTPUT_QUIET ERROR_QUIET)
  if(trial EQUAL 0)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${K520_CCACHE})
  endif()
endif()
