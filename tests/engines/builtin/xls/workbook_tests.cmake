orrery_test(xls_workbook_tests
    globals_test.cpp
    globals_patch_test.cpp
    references_test.cpp
    saved_book.cpp
    sheet_places_test.cpp
    workbook_test.cpp
    LINK orrery_xls)
target_include_directories(xls_workbook_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/..)
