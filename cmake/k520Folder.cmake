# What differs between systems stands in a folder of this name below the one that needs it.
if(WIN32)
  set(K520_PLATFORM windows)
else()
  set(K520_PLATFORM posix)
endif()

# k520_folder(FOLDER [QT] [USES LIBRARY...])
#
# Makes a library of a folder below src: link/port becomes k520_link_port. A header is named by its
# folder ("link/port/SerialPort.h"), and is found by what links that library, by nothing else: the
# include root of a library holds a link to its own folder alone. So an include that the arrows do
# not allow does not compile. QT marks a folder of windows; no other sees the toolkit.
function(k520_folder folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "QT" "" "USES")
  string(REPLACE "/" "_" name k520_${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.h ${folder}/*.cpp
       ${folder}/${K520_PLATFORM}/*.h ${folder}/${K520_PLATFORM}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})

  set(root ${PROJECT_BINARY_DIR}/roots/${name})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${name} PUBLIC ${root})

  target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE k520_options)
  if(arg_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_compile_definitions(${name} PUBLIC QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
    target_link_libraries(${name} PUBLIC Qt6::Widgets)
  endif()

  # The first folder of each kind makes what the others of its kind use.
  if(folder STREQUAL "base")
    k520_precompile(${name} PRIVATE <algorithm> <array> <chrono> <filesystem> <functional>
                    <memory> <optional> <span> <string> <vector> <fmt/format.h>)
  elseif(folder STREQUAL "desktop/widgets")
    k520_precompile(${name} PRIVATE <algorithm> <functional> <optional> <string> <vector>
                    <fmt/format.h> <QtWidgets>)
  elseif(arg_QT)
    k520_precompile(${name} REUSE_FROM k520_desktop_widgets)
  else()
    k520_precompile(${name} REUSE_FROM k520_base)
  endif()
endfunction()
