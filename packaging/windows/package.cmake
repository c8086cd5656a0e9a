# The packages for Windows: `cpack` in the build folder makes a set-up program and a zip to unpack and
# run. Both have the same files. When the program starts for the first time, it copies the folder data
# beside itself.

file(READ ${PROJECT_SOURCE_DIR}/LICENSE license)
file(READ ${CMAKE_CURRENT_SOURCE_DIR}/notices.txt notices)
configure_file(windows/LICENSE.txt.in LICENSE.txt @ONLY NEWLINE_STYLE CRLF)
configure_file(windows/README.txt.in README.txt @ONLY NEWLINE_STYLE CRLF)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/LICENSE.txt ${CMAKE_CURRENT_BINARY_DIR}/README.txt
        DESTINATION .)
install(FILES ${PROJECT_SOURCE_DIR}/data/orrery.ini ${PROJECT_SOURCE_DIR}/data/tips.txt
              ${PROJECT_SOURCE_DIR}/data/countries.tsv ${PROJECT_SOURCE_DIR}/data/languages.ini
        DESTINATION data)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/holiday ${PROJECT_SOURCE_DIR}/data/template
        DESTINATION data)

# The picture on the last page of the set-up program.
set(picture ${CMAKE_CURRENT_BINARY_DIR}/setup)
add_custom_command(OUTPUT ${picture}.bmp
    COMMAND ${ORRERY_RSVG_CONVERT} --width 164 --height 314 --output ${picture}.png
            ${CMAKE_CURRENT_SOURCE_DIR}/windows/setup.svg
    COMMAND ${ORRERY_HELP_PYTHON} -B ${CMAKE_CURRENT_SOURCE_DIR}/windows/bitmap.py
            ${picture}.png ${picture}.bmp
    DEPENDS windows/setup.svg windows/bitmap.py VERBATIM)
add_custom_target(setup_picture ALL DEPENDS ${picture}.bmp)

set(CPACK_GENERATOR "NSIS;ZIP")
set(CPACK_PACKAGE_NAME Orrery)
set(CPACK_PACKAGE_VENDOR "The Orrery developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Fills your own Excel templates with calendars")
set(CPACK_PACKAGE_HOMEPAGE_URL ${ORRERY_SITE})
set(CPACK_PACKAGE_FILE_NAME orrery-${PROJECT_VERSION}-windows)
orrery_program(ORRERY_ADVZIP advzip advancecomp "compresses the zip")
set(CPACK_ORRERY_ADVZIP ${ORRERY_ADVZIP})
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/windows/compress.cmake)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/windows/generators.cmake)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_SOURCE_DIR}/windows) # NSIS.template.in
set(CPACK_NSIS_DISPLAY_NAME Orrery)
set(CPACK_NSIS_MUI_ICON ${CMAKE_CURRENT_BINARY_DIR}/icons/orrery.ico)
set(CPACK_NSIS_MUI_WELCOMEFINISHPAGE_BITMAP ${picture}.bmp)
include(CPack)
