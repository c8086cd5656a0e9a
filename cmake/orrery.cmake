# What every target of the project has in common.

# Sources that exist once for each system end in it: file_replace_posix.cpp, file_replace_windows.cpp.
if(WIN32)
    set(ORRERY_PLATFORM windows)
else()
    set(ORRERY_PLATFORM posix)
endif()

add_library(orrery_options INTERFACE)
target_include_directories(orrery_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(MSVC)
    target_compile_options(orrery_options INTERFACE
        /W4 /utf-8 /permissive- /Zc:__cplusplus /EHsc $<$<BOOL:${ORRERY_WERROR}>:/WX>)
    # Without it the compiler objects to functions of the standard library.
    target_compile_definitions(orrery_options INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
    target_compile_options(orrery_options INTERFACE
        -Wall -Wextra -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
        -Woverloaded-virtual -Wold-style-cast -pedantic-errors
        $<$<BOOL:${ORRERY_WERROR}>:-Werror>)
endif()
if(WIN32)
    target_compile_definitions(orrery_options INTERFACE
        UNICODE _UNICODE STRICT NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
if(MINGW) # nothing has to lie beside the programs
    target_compile_options(orrery_options INTERFACE -ffunction-sections -fdata-sections)
    target_link_options(orrery_options INTERFACE -static -Wl,--gc-sections)
endif()
if(ORRERY_SANITIZE)
    target_compile_options(orrery_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(orrery_options INTERFACE -fsanitize=address,undefined)
endif()
if(ORRERY_FUZZ)
    target_compile_options(orrery_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    target_link_options(orrery_options INTERFACE -fsanitize=address,undefined)
endif()

# orrery_library(NAME SOURCES... LINK libraries...): one folder, one library.
function(orrery_library name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PUBLIC orrery_options ${ARG_LINK})
endfunction()

# orrery_test(NAME SOURCES... LINK libraries...): one folder's tests in one program.
function(orrery_test name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE orrery_options ${ARG_LINK} GTest::gmock GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        ORRERY_SOURCE_DIR="${PROJECT_SOURCE_DIR}" ORRERY_TEST_DIR="${CMAKE_CURRENT_SOURCE_DIR}")
    if(WIN32) # every start of a program costs time there: it is one test
        target_compile_options(${name} PRIVATE $<$<BOOL:${MINGW}>:-O0>)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 600)
    else()
        gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                             NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
    endif()
endfunction()

# orrery_program(VARIABLE PROGRAM PACKAGE PURPOSE): finds a program that the build cannot do without.
function(orrery_program variable program package purpose)
    find_program(${variable} ${program})
    if(NOT ${variable})
        message(FATAL_ERROR "${program} ${purpose} and was not found: install ${package} "
                            "or set ${variable} to its path.")
    endif()
endfunction()

# orrery_fuzzer(NAME SOURCE LINK libraries...)
function(orrery_fuzzer name source)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE orrery_options ${ARG_LINK})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
endfunction()

# orrery_sources(VARIABLE FOLDER): the sources of all targets of a folder and those below it, from the
# project's root. Sources for another system are in no target, so they are not among them.
function(orrery_sources variable folder)
    set(found)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(sources ${target} SOURCES)
        get_target_property(here ${target} SOURCE_DIR)
        foreach(source ${sources})
            if(source MATCHES "[.]cpp$")
                cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${here} NORMALIZE)
                cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
                list(APPEND found ${source})
            endif()
        endforeach()
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below ${folders})
        orrery_sources(sources ${below})
        list(APPEND found ${sources})
    endforeach()
    list(REMOVE_DUPLICATES found)
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# orrery_tidy(): a target `tidy` that runs clang-tidy over the sources of all targets in src; a file
# is looked at again only when it, a header or the configuration has changed.
function(orrery_tidy)
    find_program(ORRERY_CLANG_TIDY clang-tidy)
    if(NOT ORRERY_CLANG_TIDY)
        return()
    endif()
    file(GLOB_RECURSE headers ${PROJECT_SOURCE_DIR}/src/*.h)
    orrery_sources(sources ${PROJECT_SOURCE_DIR})
    list(FILTER sources INCLUDE REGEX "^src/")
    set(stamps)
    foreach(source ${sources})
        string(REPLACE "/" "_" stamp ${source})
        set(stamp ${PROJECT_BINARY_DIR}/tidy/${stamp}.stamp)
        add_custom_command(OUTPUT ${stamp}
            COMMAND ${ORRERY_CLANG_TIDY} --quiet -p ${PROJECT_BINARY_DIR} ${source}
            COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
            DEPENDS ${PROJECT_SOURCE_DIR}/${source} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
            COMMENT "clang-tidy ${source}")
        list(APPEND stamps ${stamp})
    endforeach()
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/tidy)
    add_custom_target(tidy DEPENDS ${stamps})
endfunction()
