# The differences between the packages; CPack reads this file for each of them.
if(CPACK_GENERATOR STREQUAL "NSIS")
    string(APPEND CPACK_PACKAGE_FILE_NAME -setup)
elseif(CPACK_GENERATOR STREQUAL "ZIP")
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
    set(CPACK_PACKAGING_INSTALL_PREFIX /Orrery) # one folder, the same for every version
endif()
