orrery_test(xls_cells_tests
    seen_sheet.cpp
    sheet_bytes_test.cpp
    sheet_cells_test.cpp
    sheet_corpus_test.cpp
    sheet_random_test.cpp
    sheet_text_test.cpp
    LINK orrery_xls)
