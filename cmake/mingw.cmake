# Cross-builds for 64-bit Windows with Debian's mingw-w64 (posix threads). ORRERY_WINDOWS_LIBRARIES
# is the folder that scripts/windows/libraries.sh prints.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(host x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${host}-gcc-posix)
set(CMAKE_CXX_COMPILER ${host}-g++-posix)
set(CMAKE_RC_COMPILER ${host}-windres)

# Runs what was built, in tests too.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/wine.sh)

# Libraries and headers come from the cross compiler and that folder, never from this system.
set(CMAKE_FIND_ROOT_PATH /usr/${host} ${ORRERY_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ORRERY_WINDOWS_LIBRARIES)
if(ORRERY_WINDOWS_LIBRARIES)
    set(wxWidgets_CONFIG_EXECUTABLE ${ORRERY_WINDOWS_LIBRARIES}/bin/wx-config CACHE FILEPATH "")
endif()
