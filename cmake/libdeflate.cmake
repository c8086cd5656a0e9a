# Libdeflate::libdeflate, which compresses the parts of containers: the static library where there is one,
# so that programs load one library less.
find_package(libdeflate CONFIG QUIET) # as vcpkg has it
if(TARGET libdeflate::libdeflate_static)
    add_library(Libdeflate::libdeflate ALIAS libdeflate::libdeflate_static)
else()
    find_path(LIBDEFLATE_INCLUDE_DIR libdeflate.h REQUIRED)
    find_library(LIBDEFLATE_LIBRARY NAMES libdeflate.a libdeflatestatic.lib deflate REQUIRED)
    add_library(Libdeflate::libdeflate UNKNOWN IMPORTED)
    set_target_properties(Libdeflate::libdeflate PROPERTIES
        IMPORTED_LOCATION ${LIBDEFLATE_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${LIBDEFLATE_INCLUDE_DIR})
endif()
