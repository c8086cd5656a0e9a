# What damaged and oversized workbooks must not do.
orrery_test(xls_hostile_tests
    built_compound.cpp
    bytes_test.cpp
    damaged_sheets_test.cpp
    failed_calls_test.cpp
    output_limits_test.cpp
    saved_book.cpp
    scale_test.cpp
    LINK orrery_xls)
target_include_directories(xls_hostile_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/..)
