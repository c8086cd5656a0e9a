# Where ccache is installed, it keeps compiled objects in the user's cache folder, for checkouts in any
# folder.

option(ORRERY_CCACHE "Keep compiled objects in the cache folder, where ccache is installed" ON)

# Messages and debug information name the sources relative to the project, so that objects are the same
# wherever they are compiled.
if(NOT MSVC)
    add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

find_program(ORRERY_CCACHE_PROGRAM ccache)
if(ORRERY_CCACHE AND ORRERY_CCACHE_PROGRAM AND CMAKE_HOST_UNIX)
    # A script with the name of ccache passes it the settings: programs that read compile_commands.json
    # know that name.
    file(CONFIGURE OUTPUT launcher/ccache @ONLY CONTENT [=[
#!/bin/sh
cache=${XDG_CACHE_HOME:-$HOME/.cache}
export CCACHE_DIR="${CCACHE_DIR:-$cache/orrery/ccache}" CCACHE_BASEDIR='@PROJECT_SOURCE_DIR@' CCACHE_NOHASHDIR=1
exec '@ORRERY_CCACHE_PROGRAM@' "$@"
]=])
    file(CHMOD ${PROJECT_BINARY_DIR}/launcher/ccache
         PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${PROJECT_BINARY_DIR}/launcher/ccache)
endif()
