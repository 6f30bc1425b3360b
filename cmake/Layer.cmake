# zd_layer(NAME DEPENDS dep...): a static library from every .cpp of the calling
# folder and its sub-folders, except those under a qt/ folder (the presentation layer).
function(zd_layer name)
  cmake_parse_arguments(L "" "" "DEPENDS;EXCLUDE" ${ARGN})
  file(GLOB_RECURSE srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(ex IN LISTS L_EXCLUDE)
    list(FILTER srcs EXCLUDE REGEX "${ex}")
  endforeach()
  if(srcs)
    add_library(${name} STATIC ${srcs})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${L_DEPENDS} PRIVATE zd_warnings)
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${L_DEPENDS})
  endif()
endfunction()

# zd_test(NAME src... LIBS lib...): one GoogleTest program registered with ctest.
function(zd_test name)
  cmake_parse_arguments(T "" "" "LIBS" ${ARGN})
  add_executable(${name} ${T_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main zd_warnings)
  target_compile_definitions(${name} PRIVATE ZD_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  gtest_discover_tests(${name} WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} DISCOVERY_TIMEOUT 60)
endfunction()

# zd_fuzz(NAME src... LIBS lib...): a libFuzzer target.
function(zd_fuzz name)
  cmake_parse_arguments(F "" "" "LIBS" ${ARGN})
  add_executable(${name} ${F_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${F_LIBS})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()

# zd_bench(NAME src... LIBS lib...): a Google Benchmark program.
function(zd_bench name)
  cmake_parse_arguments(B "" "" "LIBS" ${ARGN})
  add_executable(${name} ${B_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${B_LIBS} benchmark::benchmark zd_warnings)
endfunction()
