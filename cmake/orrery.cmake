# What every target of the project has in common.

# A source for one system ends in its name: file_replace_posix.cpp, file_replace_windows.cpp.
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
if(MINGW) # the programs need no DLLs beside them
    target_compile_options(orrery_options INTERFACE -ffunction-sections -fdata-sections)
    set(script ${ORRERY_WINDOWS_LIBRARIES}/lib/collectable.ld) # of libraries with unused functions
    target_link_options(orrery_options INTERFACE -static -Wl,--gc-sections,-T,${script})
    target_link_directories(orrery_options INTERFACE ${ORRERY_WINDOWS_LIBRARIES}/lib)
    set_property(TARGET orrery_options APPEND PROPERTY INTERFACE_LINK_DEPENDS ${script})
endif()
if(ORRERY_SANITIZE)
    target_compile_options(orrery_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(orrery_options INTERFACE -fsanitize=address,undefined)
endif()
if(ORRERY_FUZZ)
    # A failed assertion is a finding, too: optimised builds would leave assertions out.
    target_compile_options(orrery_options INTERFACE -UNDEBUG
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    target_link_options(orrery_options INTERFACE -fsanitize=address,undefined)
endif()

# orrery_apart(SOURCES...): keeps sources that include Windows headers apart in a build that joins sources,
# because the macros of these headers reach everything after them.
function(orrery_apart)
    list(FILTER ARGN INCLUDE REGEX "_windows(_test)?[.]cpp$")
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# orrery_library(NAME SOURCES... LINK libraries...): one folder, one library.
function(orrery_library name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
    orrery_apart(${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PUBLIC orrery_options ${ARG_LINK})
endfunction()

# orrery_single_sources(LIBRARY): keeps the sources of a library apart on Windows, where orrery-pdf.dll has
# parts of it, and would have all of it.
function(orrery_single_sources library)
    if(WIN32)
        set_target_properties(${library} PROPERTIES UNITY_BUILD OFF)
    endif()
endfunction()

# orrery_test(NAME SOURCES... LINK libraries...): one folder's tests in one program, which is one test of
# CTest's where the sources are joined, and many elsewhere. If the unit tests run in another build, the
# program is built only on request.
function(orrery_test name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
    orrery_apart(${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE orrery_options ${ARG_LINK} orrery_places GTest::gmock GTest::gtest_main)
    if(NOT ORRERY_UNIT_TESTS AND NOT ORRERY_FULL)
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
        return()
    endif()
    if(MINGW)
        target_compile_options(${name} PRIVATE -O0 -Wa,-mbig-obj)
    endif()
    if(WIN32 OR ORRERY_JOIN_TESTS) # every start of a program costs time
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 900)
    else()
        gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                             NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
    endif()
endfunction()

# orrery_skip_leak_search(TEST): for programs that may end while threads of a connection to LibreOffice are
# still ending: there LeakSanitizer's search crashes. The unit tests of the connection search for leaks.
function(orrery_skip_leak_search test)
    set_property(TEST ${test} APPEND PROPERTY ENVIRONMENT ASAN_OPTIONS=detect_leaks=0)
endfunction()

# orrery_program(VARIABLE PROGRAM PACKAGE PURPOSE): finds a program that the build needs.
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

# orrery_sources(VARIABLE FOLDER): the sources of all targets below src, as the compiler gets them: for a
# target that is built as one, that one file and the sources that stay apart because they have options of
# their own. Sources for another system are in no target.
function(orrery_sources variable folder)
    set(found)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target ${targets})
        get_target_property(sources ${target} SOURCES)
        get_target_property(here ${target} SOURCE_DIR)
        get_target_property(binary ${target} BINARY_DIR)
        get_target_property(unity ${target} UNITY_BUILD)
        list(FILTER sources INCLUDE REGEX "[.]cpp$")
        if(NOT here MATCHES "^${PROJECT_SOURCE_DIR}/src/" OR NOT sources)
            continue()
        endif()
        list(TRANSFORM sources REPLACE "^([^/].*)$" "${here}/\\1")
        if(unity)
            set(apart)
            foreach(source ${sources})
                foreach(property SKIP_UNITY_BUILD_INCLUSION COMPILE_DEFINITIONS COMPILE_OPTIONS)
                    get_source_file_property(own ${source} TARGET_DIRECTORY ${target} ${property})
                    if(own)
                        list(APPEND apart ${source})
                    endif()
                endforeach()
            endforeach()
            list(REMOVE_ITEM sources ${apart})
            if(sources)
                set(sources ${binary}/CMakeFiles/${target}.dir/Unity/unity_0_cxx.cxx)
            endif()
            list(APPEND sources ${apart})
        endif()
        list(APPEND found ${sources})
    endforeach()
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below ${folders})
        orrery_sources(sources ${below})
        list(APPEND found ${sources})
    endforeach()
    set(${variable} ${found} PARENT_SCOPE)
endfunction()

# orrery_tidy(): a target `tidy` that runs clang-tidy over the sources below src for this system. It runs
# again only over what has changed, or when the configuration has.
function(orrery_tidy)
    find_program(ORRERY_CLANG_TIDY clang-tidy)
    if(NOT ORRERY_CLANG_TIDY)
        return()
    endif()
    file(GLOB_RECURSE headers ${PROJECT_SOURCE_DIR}/src/*.h)
    orrery_sources(sources ${PROJECT_SOURCE_DIR})
    set(stamps)
    foreach(source ${sources})
        # A file that joins others is as old as the newest of them.
        set(included)
        set(checks)
        if(source MATCHES "/([^/]+)[.]dir/Unity/")
            get_target_property(here ${CMAKE_MATCH_1} SOURCE_DIR)
            file(GLOB included ${here}/*.cpp)
            set(checks --checks=-bugprone-suspicious-include)
        endif()
        cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE name)
        string(REPLACE "/" "_" stamp ${name})
        set(stamp ${PROJECT_BINARY_DIR}/tidy/${stamp}.stamp)
        add_custom_command(OUTPUT ${stamp}
            COMMAND ${PROJECT_SOURCE_DIR}/scripts/tidy.py ${PROJECT_BINARY_DIR} ${source} ${checks}
            COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
            DEPENDS ${source} ${included} ${headers} ${PROJECT_SOURCE_DIR}/.clang-tidy
                    ${PROJECT_SOURCE_DIR}/scripts/tidy.py
            WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
            COMMENT "clang-tidy ${name}")
        list(APPEND stamps ${stamp})
    endforeach()
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/tidy)
    add_custom_target(tidy DEPENDS ${stamps})
endfunction()
