orrery_test(xlsx_workbook_tests
    identities_test.cpp
    saved_package.cpp
    sheet_copy_test.cpp
    sheet_tables_test.cpp
    workbook_test.cpp
    LINK orrery_xlsx)
