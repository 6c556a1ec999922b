# How every target of the project is built: one library a folder of src/, warnings as errors.

add_library(carnetel_options INTERFACE)
target_compile_options(carnetel_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Optimising, g++ 12 sees overlaps inside std::string that are not there (GCC bug 105329).
  target_compile_options(carnetel_options INTERFACE -Wno-restrict)
endif()
if(CARNETEL_SANITIZE)
  target_compile_options(carnetel_options INTERFACE
    -fsanitize=${CARNETEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(carnetel_options INTERFACE -fsanitize=${CARNETEL_SANITIZE})
endif()

# Behind the options above: what is tested is looked through for undefined behaviour, the tests
# themselves are not, which would take minutes more to compile.
add_library(carnetel_test_options INTERFACE)
if(CARNETEL_SANITIZE MATCHES "undefined")
  target_compile_options(carnetel_test_options INTERFACE -fno-sanitize=undefined)
endif()

# carnetel_library(base [LINKS target...]): the library carnetel_base from every .cc of this folder,
# except main.cc, which is an executable's. LINKS names what stands directly below it in the house.
function(carnetel_library name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  list(FILTER sources EXCLUDE REGEX "main\\.cc$")
  if(NOT sources)
    add_library(carnetel_${name} INTERFACE)
    target_include_directories(carnetel_${name} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(carnetel_${name} INTERFACE ${ARG_LINKS})
    return()
  endif()
  add_library(carnetel_${name} STATIC ${sources})
  target_include_directories(carnetel_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(carnetel_${name} PUBLIC ${ARG_LINKS} PRIVATE carnetel_options)
endfunction()

# carnetel_test(storage [LINKS target...]): the test program storage_test from this folder's .cc.
# CTest knows every case of it by name; under sanitizers, where starting a process costs more than
# most cases, it knows the program as one test.
function(carnetel_test name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_test ${sources})
  target_include_directories(${name}_test PRIVATE ${CMAKE_SOURCE_DIR})
  target_compile_definitions(${name}_test PRIVATE CARNETEL_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name}_test PRIVATE
    ${ARG_LINKS} carnetel_test_support GTest::gmock GTest::gtest_main carnetel_options
    carnetel_test_options)
  # What every test includes is compiled once; a build from nothing takes a third less by it.
  target_precompile_headers(${name}_test PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> <functional> <map> <memory> <optional> <string> <vector>)
  if("Qt6::Test" IN_LIST ARG_LINKS)
    target_precompile_headers(${name}_test PRIVATE <QtTest/QtTest> <QtWidgets/QtWidgets>)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # For ccache, which looks at preprocessed text.
    target_compile_options(${name}_test PRIVATE -fpch-preprocess)
  endif()
  if(CARNETEL_SANITIZE)
    add_test(NAME ${name} COMMAND ${name}_test --gtest_brief=1)
  else()
    gtest_discover_tests(${name}_test TEST_PREFIX ${name}. NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
