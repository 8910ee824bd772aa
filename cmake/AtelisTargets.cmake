# The vocabulary of the build: every CMakeLists.txt below is a list of these.
include(GNUInstallDirs)

add_library(atelis_options INTERFACE)
target_compile_options(atelis_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror)
# GCC 12 sees overlapping copies in the library's own concatenation of strings.
target_compile_options(atelis_options INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
target_compile_definitions(atelis_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
set(sanitizer_flags "")
if(ATELIS_SANITIZE OR ATELIS_FUZZ)
    set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
endif()
if(ATELIS_FUZZ)
    list(APPEND sanitizer_flags -fsanitize=fuzzer-no-link)
endif()
target_compile_options(atelis_options INTERFACE ${sanitizer_flags})
target_link_options(atelis_options INTERFACE ${sanitizer_flags})

# For what is compiled far longer than it runs, in builds that are made for their tests.
set(quick_build $<$<BOOL:${ATELIS_SANITIZE}>:-O0>)

# One folder below src: a static library of the folder's name. DEPENDS names the folders and outside
# libraries that its headers may include.
function(atelis_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    add_library(atelis_${name} STATIC ${arg_SOURCES})
    add_library(atelis::${name} ALIAS atelis_${name})
    set_target_properties(atelis_${name} PROPERTIES EXPORT_NAME ${name} POSITION_INDEPENDENT_CODE ON)
    target_include_directories(atelis_${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/atelis>)
    target_compile_features(atelis_${name} PUBLIC cxx_std_20)
    target_link_libraries(atelis_${name} PUBLIC ${arg_DEPENDS} PRIVATE $<BUILD_INTERFACE:atelis_options>)
    set_property(GLOBAL APPEND PROPERTY ATELIS_LIBRARIES atelis_${name})
endfunction()

function(atelis_program name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} atelis_options)
    set_property(GLOBAL APPEND PROPERTY ATELIS_PROGRAMS ${name})
endfunction()

# The tests of one folder: one GoogleTest program, one entry of ctest.
function(atelis_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${name}_test ${arg_SOURCES})
    target_include_directories(${name}_test PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name}_test PRIVATE ${arg_DEPENDS} GTest::gmock GTest::gtest_main atelis_options)
    target_compile_options(${name}_test PRIVATE ${quick_build})
    add_test(NAME ${name} COMMAND ${name}_test)
endfunction()

# A fuzz target. With ATELIS_FUZZ it is a libFuzzer program; otherwise it replays its seed corpus as a test.
function(atelis_fuzz name)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    add_executable(${name}_fuzz ${name}_fuzz.cpp)
    target_link_libraries(${name}_fuzz PRIVATE ${arg_DEPENDS} atelis_options)
    if(ATELIS_FUZZ)
        target_link_options(${name}_fuzz PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(${name}_fuzz PRIVATE replay_main.cpp)
        add_test(NAME fuzz_${name} COMMAND ${name}_fuzz ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
endfunction()

function(atelis_benchmark name)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    add_executable(${name}_benchmark ${name}_benchmark.cpp)
    target_link_libraries(${name}_benchmark PRIVATE ${arg_DEPENDS} benchmark::benchmark_main atelis_options)
endfunction()
