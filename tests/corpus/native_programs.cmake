# cmake -DSOURCE=FOLDER -DBUILD=FOLDER -P native_programs.cmake: builds orrery-cli and workbook_driver
# for this system, in a folder that is configured as it is, or else without the window.
if(NOT EXISTS ${BUILD}/CMakeCache.txt)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja
                            -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORRERY_WINDOW=OFF -DORRERY_BENCH=OFF
                    COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target orrery-cli workbook_driver
                COMMAND_ERROR_IS_FATAL ANY)
