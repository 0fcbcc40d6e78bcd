# One target carries the flags that every source of ours is built with.
include(GoogleTest OPTIONAL)

add_library(orvantine_flags INTERFACE)
target_compile_options(
    orvantine_flags
    INTERFACE
        -Wall
        -Wextra
        -Wno-missing-field-initializers
        -Wpedantic
        -Wshadow
        -Wconversion
        -Wsign-conversion
        -Wold-style-cast
        -Woverloaded-virtual
        -Wnon-virtual-dtor
        $<$<BOOL:${ORVANTINE_STRICT}>:-Werror>
        -fno-omit-frame-pointer
        # g++ 12 takes an empty std::optional for an uninitialised one when it optimises.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
)
target_compile_definitions(
    orvantine_flags
    INTERFACE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400
)
if(ORVANTINE_SANITIZE)
    target_compile_options(orvantine_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined)
    target_link_options(orvantine_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ORVANTINE_FUZZ)
    target_compile_options(orvantine_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# orvantine_precompile(TARGET HEADER…): precompiles these for the target, if that was asked for. Every source still
# includes what it needs: clang-tidy reads them without.
function(orvantine_precompile target)
    if(ORVANTINE_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# orvantine_test(NAME SOURCES a.cpp … LIBRARIES x …): a GoogleTest program whose cases are ctest cases of their own.
# SECONDS is how long a case may take, 120 if nothing is told. Under the sanitizers, where a process takes long to begin,
# the program is one ctest case.
function(orvantine_test name)
    cmake_parse_arguments(ARG "" "SECONDS" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main orvantine_flags)
    if("Qt6::Widgets" IN_LIST ARG_LIBRARIES)
        orvantine_precompile(
            ${name} <gmock/gmock.h> <gtest/gtest.h> <QtWidgets> "${PROJECT_SOURCE_DIR}/tests/support/FakeDesktop.h"
        )
    elseif(ORVANTINE_PRECOMPILE AND "orvantine_fakes" IN_LIST ARG_LIBRARIES)
        target_precompile_headers(${name} REUSE_FROM orvantine_test_headers)
    endif()
    if(NOT ARG_SECONDS)
        set(ARG_SECONDS 120)
    endif()
    set(properties "")
    if(ARG_LABELS)
        list(APPEND properties LABELS "${ARG_LABELS}")
    endif()
    if(ARG_ENVIRONMENT)
        list(APPEND properties ENVIRONMENT "${ARG_ENVIRONMENT}")
    endif()
    if(ORVANTINE_SANITIZE)
        # A case runs once: to optimise it takes longer than it saves.
        target_compile_options(${name} PRIVATE -O0)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 900 ${properties})
    else()
        gtest_discover_tests(
            ${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${ARG_SECONDS} ${properties}
        )
    endif()
endfunction()
