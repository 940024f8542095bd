# What every target of the project has in common, and the few functions the folders are built with.

add_library(lumivane-options INTERFACE)
target_compile_options(lumivane-options INTERFACE -Wall -Wextra -pedantic -Wshadow -Wno-unused-parameter)
target_compile_definitions(lumivane-options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER QT_NO_FOREACH)
if(LUMIVANE_SANITIZE)
  target_compile_options(lumivane-options INTERFACE -fsanitize=${LUMIVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(lumivane-options INTERFACE -fsanitize=${LUMIVANE_SANITIZE})
endif()
if(LUMIVANE_WERROR)
  target_compile_options(lumivane-options INTERFACE -Werror)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Headers that nearly every file needs are read once for all libraries, and once more for all tests. Files include what
# they use all the same; builds with LUMIVANE_PCH=OFF prove it.
option(LUMIVANE_PCH "Precompile common headers" ON)
if(LUMIVANE_PCH)
  set(common_headers <QDateTime> <QDir> <QFile> <QString> <QStringList> <QVariant>
    <algorithm> <functional> <map> <memory> <optional> <vector>)
  add_library(lumivane-pch STATIC ${CMAKE_SOURCE_DIR}/cmake/precompiled.cpp)
  target_link_libraries(lumivane-pch PRIVATE Qt6::Core lumivane-options)
  target_precompile_headers(lumivane-pch PRIVATE ${common_headers})
  if(LUMIVANE_TESTS)
    find_package(GTest REQUIRED)
    add_library(lumivane-test-pch STATIC ${CMAKE_SOURCE_DIR}/cmake/precompiled.cpp)
    target_link_libraries(lumivane-test-pch PRIVATE Qt6::Core GTest::gtest lumivane-options)
    target_precompile_headers(lumivane-test-pch PRIVATE ${common_headers} <gtest/gtest.h>)
  endif()
endif()

# lumivane_library(<name> SOURCES <files...> USES <targets...>)
# One folder, one library. USES lists all that the folder may include from.
function(lumivane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  if(NOT ARG_SOURCES)
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE ${ARG_USES})
    return()
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE lumivane-options)
  if(LUMIVANE_PCH)
    target_precompile_headers(${name} REUSE_FROM lumivane-pch)
  endif()
endfunction()

# lumivane_test(<name> SOURCES <files...> USES <targets...>)
# A test program run by ctest; it runs without a display unless it starts one itself.
function(lumivane_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_USES} lumivane-options lumivane-test-support GTest::gtest)
  target_compile_definitions(${name} PRIVATE
    LUMIVANE_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data" LUMIVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    LUMIVANE_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
  if(LUMIVANE_PCH)
    target_precompile_headers(${name} REUSE_FROM lumivane-test-pch)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
