# One folder is one library, and a library sees the folders it declares, no others.
#
# Every room gets an include directory of its own that holds a link to each header of its folder and to no
# header of a folder below it. Dependencies are linked PRIVATE, so what a neighbour uses does not leak: an
# include of a folder that was not declared does not compile.
set_property(GLOBAL PROPERTY GLOBAL_DEPENDS_NO_CYCLES ON)

set(SPECTRINO_WARNINGS -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  list(APPEND SPECTRINO_WARNINGS -Wno-unknown-pragmas) # of loops; the program itself is built with GCC
endif()

function(spectrino_flags target)
  target_compile_options(${target} PRIVATE ${SPECTRINO_WARNINGS})
  if(SPECTRINO_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${SPECTRINO_SANITIZE} -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${SPECTRINO_SANITIZE})
  endif()
endfunction()

# spectrino_room(display_ui SOURCES a.cpp ... ROOMS display state LIBS Qt6::Widgets)
# The room's folder is the one that this is called in; display/ui is the room display_ui.
# A room of headers alone names no sources. The global property SPECTRINO_ROOMS lists all rooms so far.
function(spectrino_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;ROOMS;LIBS" ${ARGN})
  set_property(GLOBAL APPEND PROPERTY SPECTRINO_ROOMS ${name})
  set(include_dir ${CMAKE_BINARY_DIR}/rooms/${name})
  spectrino_link_headers(${include_dir})
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

# Fills include_dir anew, so that a header that was moved or deleted is gone from it too.
function(spectrino_link_headers include_dir)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE folder)
  string(REGEX REPLACE "^src/" "" folder ${folder})
  file(REMOVE_RECURSE ${include_dir})
  file(MAKE_DIRECTORY ${include_dir}/${folder})
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.h *.inl)
  foreach(header ${headers})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${include_dir}/${folder}/${header} SYMBOLIC)
  endforeach()
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
