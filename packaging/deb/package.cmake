# The Debian package: `cpack -G DEB` in the build folder. The packages that own the caches of icons, menus
# and manual pages update them by triggers.

string(TIMESTAMP deb_date "%a, %d %b %Y 00:00:00 +0000" UTC)
configure_file(deb/changelog.in changelog @ONLY)
orrery_install_packed(${CMAKE_CURRENT_BINARY_DIR}/changelog ${docs})

set(CPACK_PACKAGE_NAME orrery)
set(CPACK_PACKAGE_VENDOR "The Orrery developers")
set(CPACK_PACKAGE_CONTACT "The Orrery developers <${ORRERY_EMAIL}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "fill your own Excel templates with calendars")
set(CPACK_PACKAGE_HOMEPAGE_URL ${ORRERY_SITE})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Format an Excel workbook once, the way you like it, and Orrery writes the
calendar of any year into a copy of it: twelve month sheets and a year sheet,
with the names of the months and weekdays in your language and with your
holidays. Everything else stays as it is in the template.
.
Templates are .xls or .xlsx workbooks, and you need no spreadsheet program to
make calendars from them. Five templates, the holidays of more than twenty
countries and a command line for scripts come with the program.")
if(TARGET orrery-libreoffice) # not linked with LibreOffice, so the package does not depend on it
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "libreoffice-calc")
    string(APPEND CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "\n.\nWith LibreOffice it can make the calendars and their PDF files, too.")
endif()
include(CPack)
