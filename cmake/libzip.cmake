# libzip, with which tests and benchmarks read containers: not the code that they judge.
# Sets ORRERY_LIBZIP to its target.
if(WIN32)
    find_package(libzip CONFIG REQUIRED)
    set(ORRERY_LIBZIP libzip::zip)
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(libzip REQUIRED IMPORTED_TARGET libzip)
    set(ORRERY_LIBZIP PkgConfig::libzip)
endif()
