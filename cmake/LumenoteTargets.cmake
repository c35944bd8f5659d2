# How every target of this project is compiled, told once.

add_library(LumenoteOptions INTERFACE)
target_compile_options(LumenoteOptions INTERFACE -Wall -Wextra -Wpedantic)
target_compile_definitions(LumenoteOptions INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_include_directories(LumenoteOptions INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(LUMENOTE_WERROR)
    target_compile_options(LumenoteOptions INTERFACE -Werror)
endif()
if(LUMENOTE_SANITIZE)
    target_compile_options(LumenoteOptions INTERFACE
        -fsanitize=${LUMENOTE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(LumenoteOptions INTERFACE -fsanitize=${LUMENOTE_SANITIZE})
endif()

# lumenote_library(Name SOURCES … LINK …): one static library, one folder of src.
function(lumenote_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC LumenoteOptions ${ARG_LINK})
endfunction()

# lumenote_test(Name [DESKTOP] [ALONE] SOURCES … LINK … [ENVIRONMENT A=b …] [LABELS …]): one
# GoogleTest program, each of its cases a test of ctest. With DESKTOP it runs on an X server of its
# own; with ALONE beside no other test, for the sake of limits that the real program has. Those
# labelled "threaded", which also run under the thread sanitizer, are built by the target
# threaded-tests.
function(lumenote_test name)
    cmake_parse_arguments(ARG "DESKTOP;ALONE" "" "SOURCES;LINK;ENVIRONMENT;LABELS" ${ARGN})
    if(ARG_DESKTOP)
        list(APPEND ARG_SOURCES ${CMAKE_SOURCE_DIR}/tests/Harness/DesktopMain.cpp)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE LumenoteOptions TestHarness ${ARG_LINK})
    if("threaded" IN_LIST ARG_LABELS)
        if(NOT TARGET threaded-tests)
            add_custom_target(threaded-tests)
        endif()
        add_dependencies(threaded-tests ${name})
    endif()
    # Only what is set: an empty value would fall out of the list and shift the ones behind it.
    set(properties TIMEOUT 300 RUN_SERIAL ${ARG_ALONE})
    foreach(property ENVIRONMENT LABELS)
        if(ARG_${property})
            list(APPEND properties ${property} "${ARG_${property}}")
        endif()
    endforeach()
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES
        PROPERTIES ${properties})
endfunction()
