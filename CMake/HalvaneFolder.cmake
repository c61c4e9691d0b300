# A source folder is a target, and its USES line is both what it links and all that it may include (Scripts/check_includes.py).
#
#   halvane_folder(Codecs/BC
#       USES      Core                        other folders, by the same names
#       SOURCES   BcColours BcCompress        stems: X stands for X.h and X.cpp, whichever of them there are
#       TESTS     BcCompressTest              stems in the mirrored folder below Tests/
#       TEST_USES Conversion                  further folders that only the tests call
#       LINK      Qt5::Gui                    libraries from outside)
#
# The folder becomes the library Halvane.Codecs.BC, its tests the program Test.Codecs.BC.

function(halvane_target_name folder result)
    string(REPLACE "/" "." name "Halvane.${folder}")
    set(${result} ${name} PARENT_SCOPE)
endfunction()

function(halvane_link_folders target visibility)
    foreach(folder IN LISTS ARGN)
        halvane_target_name(${folder} folder_target)
        target_link_libraries(${target} ${visibility} ${folder_target})
    endforeach()
endfunction()

# Sets `result` to the existing files of the given stems; a stem without any file is an error.
function(halvane_files_of_stems directory result)
    set(files "")
    foreach(stem IN LISTS ARGN)
        set(found FALSE)
        foreach(ending cpp h)
            if(EXISTS ${directory}/${stem}.${ending})
                list(APPEND files ${directory}/${stem}.${ending})
                set(found TRUE)
            endif()
        endforeach()
        if(NOT found)
            message(FATAL_ERROR "${directory}/${stem}: no such .cpp or .h")
        endif()
    endforeach()
    set(${result} ${files} PARENT_SCOPE)
endfunction()

# Precompiles headers that most sources of a target include, where it has enough of them to pay.
function(halvane_precompile target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    list(LENGTH sources count)
    if(HALVANE_PRECOMPILE AND count GREATER 3)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# A program with GoogleTest cases, registered case by case with CTest.
function(halvane_tests program directory)
    cmake_parse_arguments(PARSE_ARGV 2 arg "WIDGETS" "" "SOURCES;USES;LINK")
    halvane_files_of_stems(${directory} files ${arg_SOURCES})
    add_executable(${program} ${files})
    set(main GTest::gtest_main)
    if(arg_WIDGETS)
        set(main Halvane.Tests.QtMain)
        set_target_properties(${program} PROPERTIES AUTOMOC ON)
    endif()
    halvane_link_folders(${program} PRIVATE ${arg_USES})
    target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_link_libraries(${program} PRIVATE Halvane.Tests.Support ${arg_LINK} GTest::gmock GTest::gtest ${main})
    target_compile_definitions(${program} PRIVATE HALVANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    # Half the compile time, and what has to be fast is in the libraries.
    target_compile_options(${program} PRIVATE $<$<CONFIG:Release>:-O1>)
    if(arg_WIDGETS)
        halvane_precompile(${program} <gmock/gmock.h> <gtest/gtest.h> <QtTest/QtTest> <QtWidgets/QtWidgets>)
    else()
        halvane_precompile(${program} <gmock/gmock.h> <gtest/gtest.h>)
    endif()
    gtest_discover_tests(${program} DISCOVERY_MODE PRE_TEST)
endfunction()

function(halvane_folder folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "WIDGETS" "" "USES;SOURCES;TESTS;TEST_USES;LINK")
    halvane_target_name(${folder} target)
    halvane_files_of_stems(${CMAKE_CURRENT_SOURCE_DIR} files ${arg_SOURCES})

    set(compiled ${files})
    list(FILTER compiled INCLUDE REGEX "\\.cpp$")
    if(compiled)
        add_library(${target} STATIC ${files})
        set(visibility PUBLIC)
        if(HALVANE_SANITISE)
            # With these checks of pointers clang takes minutes over vector code, and AddressSanitizer finds what they would.
            set(vectors ${compiled})
            list(FILTER vectors INCLUDE REGEX "Simd\\.cpp$")
            set_source_files_properties(${vectors} PROPERTIES COMPILE_OPTIONS "-fno-sanitize=null,object-size,pointer-overflow")
        endif()
        if(arg_WIDGETS)
            # A source that includes ui_X.h has the form X.ui beside it.
            set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON)
            target_link_libraries(${target} PUBLIC Qt5::Widgets)
        endif()
    else()
        add_library(${target} INTERFACE)
        set(visibility INTERFACE)
    endif()

    string(REGEX REPLACE "/?${folder}$" "" include_root ${CMAKE_CURRENT_SOURCE_DIR})
    target_include_directories(${target} ${visibility} ${include_root})
    halvane_link_folders(${target} ${visibility} ${arg_USES})
    target_link_libraries(${target} ${visibility} ${arg_LINK})
    set_property(GLOBAL APPEND PROPERTY HALVANE_FOLDERS ${target})

    if(arg_TESTS)
        file(RELATIVE_PATH place ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
        string(REGEX REPLACE "^Library/(Source/)?" "Library/" place ${place})
        string(REPLACE "/" "." test_name "Test.${folder}")
        set(widgets "")
        if(arg_WIDGETS)
            set(widgets WIDGETS)
        endif()
        halvane_tests(${test_name} ${PROJECT_SOURCE_DIR}/Tests/${place} ${widgets}
                      SOURCES ${arg_TESTS} USES ${folder} ${arg_TEST_USES})
    endif()
endfunction()

# A benchmark program: the stem names the source in the current folder, USES the folders it measures.
function(halvane_benchmark stem)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES;LINK")
    get_filename_component(program ${stem} NAME)
    add_executable(${program} ${stem}.cpp)
    halvane_link_folders(${program} PRIVATE ${arg_USES})
    target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_link_libraries(${program} PRIVATE Halvane.Tests.Support ${arg_LINK} benchmark::benchmark_main)
    set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/benchmarks)
endfunction()

# A libFuzzer program over a folder's entry. It runs over its own seed corpus in `ctest` for a short while.
function(halvane_fuzz_target stem)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "CORPUS;RUNS" "USES;LINK")
    get_filename_component(program ${stem} NAME)
    add_executable(${program} ${stem}.cpp)
    halvane_link_folders(${program} PRIVATE ${arg_USES})
    target_link_libraries(${program} PRIVATE ${arg_LINK})
    target_link_options(${program} PRIVATE -fsanitize=fuzzer)
    if(NOT TARGET fuzz-targets)
        add_custom_target(fuzz-targets)
    endif()
    add_dependencies(fuzz-targets ${program})
    # The corpus in the source tree is read only: what a short run finds goes into the build folder.
    set(found ${CMAKE_BINARY_DIR}/corpus/${program})
    file(MAKE_DIRECTORY ${found})
    add_test(NAME Fuzz.${program}
             COMMAND ${program} -runs=${arg_RUNS} -seed=1 -timeout=10 -rss_limit_mb=3000 -max_len=65536 -print_final_stats=1
                     ${found} ${arg_CORPUS})
    set_tests_properties(Fuzz.${program} PROPERTIES LABELS fuzz)
endfunction()
