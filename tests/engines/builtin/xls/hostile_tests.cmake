# What damaged and oversized workbooks must not do.
orrery_test(xls_hostile_tests
    bytes_test.cpp
    LINK orrery_xls)
target_include_directories(xls_hostile_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/..)
