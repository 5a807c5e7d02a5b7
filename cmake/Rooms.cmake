# One folder is one library, and a library sees the folders it declares, no others.
#
# Every room gets an include directory of its own that holds one link, named like the room, to its
# sources. Dependencies are linked PRIVATE, so what a neighbour uses does not leak: an include of a
# folder that was not declared does not compile.
set_property(GLOBAL PROPERTY GLOBAL_DEPENDS_NO_CYCLES ON)

set(SPECTRINO_WARNINGS -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor)

function(spectrino_flags target)
  target_compile_options(${target} PRIVATE ${SPECTRINO_WARNINGS})
  if(SPECTRINO_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${SPECTRINO_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${SPECTRINO_SANITIZE})
  endif()
endfunction()

# spectrino_room(dsp SOURCES a.cpp ... ROOMS state platform LIBS Qt6::Gui)
# The room's name is its path below src/ with "/" written "_": display/ui is display_ui.
# A room of headers alone names no sources.
function(spectrino_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;ROOMS;LIBS" ${ARGN})
  string(REGEX REPLACE "_.*" "" top ${name})
  set(include_dir ${CMAKE_BINARY_DIR}/rooms/${name})
  file(MAKE_DIRECTORY ${include_dir})
  set(source_dir ${CMAKE_SOURCE_DIR}/src/${top})
  if(NOT EXISTS ${source_dir})
    set(source_dir ${CMAKE_SOURCE_DIR}/${top})
  endif()
  file(CREATE_LINK ${source_dir} ${include_dir}/${top} SYMBOLIC)
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    spectrino_flags(${name})
    target_include_directories(${name} PUBLIC ${include_dir})
    target_link_libraries(${name} PRIVATE ${ARG_ROOMS} ${ARG_LIBS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${include_dir})
  endif()
endfunction()

# spectrino_test(dsp_test SOURCES ... ROOMS dsp state LIBS ...): one test program, its cases found by ctest.
function(spectrino_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;ROOMS;LIBS;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  spectrino_flags(${name})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_ROOMS} ${ARG_LIBS} GTest::gmock GTest::gtest_main Threads::Threads)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
                       PROPERTIES TIMEOUT 120 ${ARG_PROPERTIES})
endfunction()
