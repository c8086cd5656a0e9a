find_package(ZLIB REQUIRED)
orrery_test(xlsx_workbook_tests
    built_zip.cpp
    damaged_book_test.cpp
    identities_test.cpp
    saved_package.cpp
    sheet_copy_test.cpp
    sheet_tables_test.cpp
    workbook_test.cpp
    LINK orrery_xlsx ZLIB::ZLIB)
