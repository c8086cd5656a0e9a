# The Windows programs make the same bytes as the programs for the system that builds them. Builds those
# first if they are missing.
if(CMAKE_CROSSCOMPILING)
    set(ORRERY_NATIVE_BUILD "${PROJECT_SOURCE_DIR}/build/linux" CACHE PATH
        "Build folder of the programs of the system that builds")
    add_test(NAME corpus.native_programs
        COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -DBUILD=${ORRERY_NATIVE_BUILD}
                -P ${CMAKE_CURRENT_SOURCE_DIR}/native_programs.cmake)
    set_tests_properties(corpus.native_programs PROPERTIES
        TIMEOUT 1800 PROCESSORS 2 FIXTURES_SETUP native_programs)

    add_test(NAME corpus.two_systems
        COMMAND ${ORRERY_PYTHON} ${CMAKE_CURRENT_SOURCE_DIR}/check_two_systems.py
                --here ${ORRERY_NATIVE_BUILD}/src/cli/orrery-cli
                       ${ORRERY_NATIVE_BUILD}/tests/corpus/workbook_driver
                --there ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:orrery-cli>
                        $<TARGET_FILE:workbook_driver>
                --data ${PROJECT_SOURCE_DIR}/data --corpus ${ORRERY_CORPUS_DIR})
    set_tests_properties(corpus.two_systems PROPERTIES
        TIMEOUT 600 PROCESSORS 2 SKIP_RETURN_CODE 77 FIXTURES_REQUIRED native_programs
        ENVIRONMENT PYTHONDONTWRITEBYTECODE=1)
endif()
