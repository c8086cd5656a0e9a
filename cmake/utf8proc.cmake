# Utf8proc::utf8proc, which knows the properties of Unicode's characters: the static library where there is one,
# so that programs load one library less.
find_path(UTF8PROC_INCLUDE_DIR utf8proc.h REQUIRED)
find_library(UTF8PROC_LIBRARY NAMES libutf8proc.a utf8proc utf8proc_static REQUIRED)
add_library(Utf8proc::utf8proc UNKNOWN IMPORTED)
set_target_properties(Utf8proc::utf8proc PROPERTIES
    IMPORTED_LOCATION ${UTF8PROC_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${UTF8PROC_INCLUDE_DIR})
if(WIN32) # else its functions would be those of a DLL
    set_target_properties(Utf8proc::utf8proc PROPERTIES INTERFACE_COMPILE_DEFINITIONS UTF8PROC_STATIC)
endif()
