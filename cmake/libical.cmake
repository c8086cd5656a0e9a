# Libical::ical, which parses iCalendar files: on Windows the static library, elsewhere the system's.
find_path(LIBICAL_INCLUDE_DIR libical/ical.h REQUIRED)
find_library(LIBICAL_LIBRARY NAMES ical libical REQUIRED)
add_library(Libical::ical UNKNOWN IMPORTED)
set_target_properties(Libical::ical PROPERTIES
    IMPORTED_LOCATION ${LIBICAL_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${LIBICAL_INCLUDE_DIR})
