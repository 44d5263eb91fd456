# A room of the house is one folder and one library. Its headers can be included only by rooms that
# link it: each room has an include folder of its own, in the build tree, that holds nothing but a
# link to the room's folder. So an include against the order of the floors does not build.

# Programs are compiled as libraries are, so that both can use the same precompiled headers.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE ${CMAKE_CXX_COMPILE_OPTIONS_PIC})

set(KK_INCLUDE_ROOT ${CMAKE_BINARY_DIR}/rooms)

# Makes ${KK_INCLUDE_ROOT}/<name>/<folder> point at <folder> and answers the include folder.
function(kk_room_include name folder out)
  set(link ${KK_INCLUDE_ROOT}/${name}/${folder})
  get_filename_component(parent ${link} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  if(NOT EXISTS ${link})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${link} SYMBOLIC)
  endif()
  set(${out} ${KK_INCLUDE_ROOT}/${name} PARENT_SCOPE)
endfunction()

# The sources directly in a folder; sub-folders are rooms of their own.
function(kk_room_sources folder out)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
  set(${out} ${sources} PARENT_SCOPE)
endfunction()

function(kk_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 sees overflows in the library's own string code when it optimises (GCC bug 105651).
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-restrict
                           -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_EXTENSIONS OFF)
endfunction()

# What most files include is compiled once for all rooms, once for all tests, and once more each for
# what draws with Qt, instead of once for each room.
# kk_precompiled(<name> HEADERS <headers> LIBS <libraries that have them>)
function(kk_precompiled name)
  cmake_parse_arguments(ARG "" "" "HEADERS;LIBS" ${ARGN})
  add_library(${name} OBJECT ${CMAKE_SOURCE_DIR}/cmake/precompiled.cpp)
  kk_defaults(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  target_precompile_headers(${name} PRIVATE
    <algorithm> <array> <atomic> <chrono> <condition_variable> <cstdint> <deque> <filesystem>
    <functional> <map> <memory> <mutex> <optional> <set> <string> <string_view> <thread>
    <unordered_map> <unordered_set> <utility> <variant> <vector> ${ARG_HEADERS})
endfunction()

# kk_use_precompiled(<target> <name of what kk_precompiled made>); the last call counts. A room whose
# libraries define macros that change those headers has DISABLE_PRECOMPILE_HEADERS instead.
function(kk_use_precompiled target name)
  if(KK_PCH)
    set_target_properties(${target} PROPERTIES PRECOMPILE_HEADERS_REUSE_FROM ${name})
  endif()
endfunction()

# A room of libkbcommon: an object library, and an interface target that others link.
# kk_host_room(<name> <folder> ROOMS <rooms it may use> LIBS <external libraries>)
function(kk_host_room name folder)
  cmake_parse_arguments(ARG "" "" "ROOMS;LIBS" ${ARGN})
  kk_room_include(${name} ${folder} include)
  add_library(${name} INTERFACE)
  target_include_directories(${name} INTERFACE ${include})
  target_compile_features(${name} INTERFACE cxx_std_20)
  target_link_libraries(${name} INTERFACE ${ARG_ROOMS})
  kk_room_sources(${folder} sources)
  if(sources)
    add_library(${name}_objects OBJECT ${sources})
    kk_defaults(${name}_objects)
    kk_use_precompiled(${name}_objects kk_precompiled_rooms)
    target_link_libraries(${name}_objects PRIVATE ${name} ${ARG_LIBS})
    set_property(GLOBAL APPEND PROPERTY KK_HOST_OBJECTS ${name}_objects)
    set_property(GLOBAL APPEND PROPERTY KK_HOST_LIBS ${ARG_LIBS})
  endif()
endfunction()

# A room of the plug-in, of a source or of an application: a static library.
# kk_room(<name> <folder> ROOMS <rooms it may use> LIBS <external libraries>)
function(kk_room name folder)
  cmake_parse_arguments(ARG "" "" "ROOMS;LIBS" ${ARGN})
  kk_room_include(${name} ${folder} include)
  kk_room_sources(${folder} sources)
  if(sources)
    add_library(${name} STATIC ${sources})
    kk_defaults(${name})
    kk_use_precompiled(${name} kk_precompiled_rooms)
    set(scope PUBLIC)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${include})
  target_link_libraries(${name} ${scope} ${ARG_ROOMS} kbcommon)
endfunction()

# The tests of one room: tests/<folder>/*.cpp. Files named *_fixture.cpp are not part of it.
# kk_room_test(<folder> [THREADS] ROOMS <rooms> LIBS <external libraries>)
# THREADS: several threads meet in this room; the thread sanitizer looks at its tests, too.
function(kk_room_test folder)
  if(NOT KK_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "THREADS" "" "ROOMS;LIBS" ${ARGN})
  kk_room_sources(tests/${folder} sources)
  if(NOT sources)
    return()
  endif()
  string(REPLACE "/" "_" name test_${folder})
  add_executable(${name} ${sources})
  kk_defaults(${name})
  kk_use_precompiled(${name} kk_precompiled_tests)
  target_compile_options(${name} PRIVATE -Wno-conversion)
  target_link_libraries(${name} PRIVATE kk_test_support ${ARG_ROOMS} kbcommon ${ARG_LIBS}
                        GTest::gmock_main GTest::gtest)
  target_compile_definitions(${name} PRIVATE KK_TEST_SOURCE_DIR="${CMAKE_SOURCE_DIR}/tests"
                             KK_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  # The logic is what runs without a program around it; sanitizer builds test that alone.
  set(label logic)
  if(folder MATCHES "^apps/")
    set(label apps)
  else()
    set_property(GLOBAL APPEND PROPERTY KK_LOGIC_TESTS ${name})
  endif()
  if(ARG_THREADS)
    set(label ${label}_threads)  # one word that both selections find
    set_property(GLOBAL APPEND PROPERTY KK_THREAD_TESTS ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300 LABELS ${label})
endfunction()
