# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT

include_guard()

# Code that sanitizers watch takes several times as long to optimise.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    set(MOLK_SANITIZED ON)
else()
    set(MOLK_SANITIZED OFF)
endif()

# What every target of ours is compiled with.
function(molk_compile_rules target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
        $<$<BOOL:${MOLK_WERROR}>:-Werror>)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_TO_ASCII QT_RESTRICTED_CAST_FROM_ASCII
        QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS QT_NO_URL_CAST_FROM_STRING
        QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

    molk_use_precompiled_headers(${target})

    # A source that is added to a target must be looked at by moc, but CMake 3.25 has no edge from
    # the list of sources to the moc step. So each run of CMake makes that step run anew.
    get_target_property(folder ${target} BINARY_DIR)
    file(REMOVE ${folder}/${target}_autogen/timestamp)
endfunction()

# Qt's headers are most of what the compiler reads for a test. The test library that a target links has
# them precompiled, with widgets if the target sees widgets: a precompiled header is good for those alone
# that define what it was made with. See docs/decisions/0009-what-tests-are-compiled-with.md.
function(molk_use_precompiled_headers target)
    set(seen)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    foreach(library IN LISTS libraries)
        if(library STREQUAL Qt5::Widgets OR library STREQUAL hostapi)
            list(APPEND seen widgets)
        elseif(library STREQUAL Qt5::Gui)
            list(APPEND seen gui)
        elseif(library MATCHES "^molk_test(core|widgets)$")
            list(APPEND seen test)
        endif()
        if(TARGET ${library})
            get_property(more TARGET ${library} PROPERTY MOLK_SEEN)
            list(APPEND seen ${more})
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES MOLK_SEEN "${seen}")

    # The editing session comes before these libraries, and is compiled as the product is.
    if(NOT test IN_LIST seen OR NOT TARGET molk_testwidgets OR target STREQUAL molk_testwidgets)
        return()
    elseif(widgets IN_LIST seen)
        target_precompile_headers(${target} REUSE_FROM molk_testwidgets)
    elseif(NOT gui IN_LIST seen)
        target_precompile_headers(${target} REUSE_FROM molk_testcore)
    endif()
    # What moc makes of a test is included by it, so that this file is empty.
    set_source_files_properties(
        ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# The headers ui_NAME.h of forms/NAME.ui, for the sources of a target. They are outputs that the build
# knows, so that a change to a form reaches all that includes it in the same build. What CMAKE_AUTOUIC
# makes is unknown to the build, which then finds the change one build too late.
function(molk_add_forms target)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/ui)
    file(MAKE_DIRECTORY ${folder})
    foreach(name IN LISTS ARGN)
        set(form ${PROJECT_SOURCE_DIR}/forms/${name}.ui)
        set(header ${folder}/ui_${name}.h)
        add_custom_command(OUTPUT ${header} COMMAND Qt5::uic -o ${header} ${form} DEPENDS ${form}
            VERBATIM)
        set_source_files_properties(${header} PROPERTIES SKIP_AUTOMOC ON)
        target_sources(${target} PRIVATE ${header})
    endforeach()
    target_include_directories(${target} PRIVATE ${folder})
    set_target_properties(${target} PROPERTIES MOLK_FORMS "${ARGN}")
endfunction()

# A static library. FORMS are names of forms, INCLUDES folders below the project's root that users of
# the library see.
function(molk_add_library target)
    cmake_parse_arguments(arg "" "" "SOURCES;FORMS;INCLUDES;LINK" ${ARGN})
    add_library(${target} STATIC ${arg_SOURCES})
    foreach(folder IN LISTS arg_INCLUDES)
        target_include_directories(${target} PUBLIC
            $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${folder}>)
    endforeach()
    target_link_libraries(${target} PUBLIC ${arg_LINK})
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    if(arg_FORMS)
        molk_add_forms(${target} ${arg_FORMS})
    endif()
    molk_compile_rules(${target})
endfunction()

# A library once more, with each basic block counted that it runs through: see
# tests/support/blockcount.h.
function(molk_add_counted_library target library)
    get_target_property(sources ${library} SOURCES)
    list(FILTER sources EXCLUDE REGEX "/ui_[a-z]+\\.h$")
    get_target_property(forms ${library} MOLK_FORMS)
    get_target_property(folder ${library} SOURCE_DIR)
    set(counted)
    foreach(source IN LISTS sources)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder})
        list(APPEND counted ${source})
    endforeach()
    add_library(${target} STATIC ${counted})
    target_include_directories(${target} PUBLIC
        $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
    target_link_libraries(${target} PUBLIC $<TARGET_PROPERTY:${library},INTERFACE_LINK_LIBRARIES>)
    target_compile_options(${target} PRIVATE -fsanitize-coverage=trace-pc)
    # Or else clang-tidy would look at each of these sources twice.
    set_target_properties(${target} PROPERTIES EXPORT_COMPILE_COMMANDS OFF)
    if(forms)
        molk_add_forms(${target} ${forms})
    endif()
    molk_compile_rules(${target})
endfunction()

# A test program of one source; what follows the source is linked.
function(molk_add_test target source)
    add_executable(${target} ${source})
    target_link_libraries(${target} PRIVATE ${ARGN})
    molk_compile_rules(${target})
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES TIMEOUT 120 ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp")
endfunction()

# A benchmark of one source, bench_<topic>.cpp; `./dev bench` runs it.
function(molk_add_benchmark target source)
    add_executable(${target} ${source})
    target_link_libraries(${target} PRIVATE molk_comparison ${ARGN})
    molk_compile_rules(${target})
endfunction()

# A fuzz target of one source: libFuzzer's in the fuzz preset, else a program that replays the
# target's corpus as a test.
function(molk_add_fuzzer target source)
    add_executable(${target} ${source})
    target_link_libraries(${target} PRIVATE ${ARGN})
    if(MOLK_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer)
        target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
        target_link_libraries(${target} PRIVATE Qt5::Core)
        add_test(NAME ${target}_corpus COMMAND ${target} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${target})
    endif()
    molk_compile_rules(${target})
endfunction()
