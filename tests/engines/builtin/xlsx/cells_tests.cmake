orrery_test(xlsx_cells_tests
    cell_address_test.cpp
    shared_strings_test.cpp
    sheet_cells_test.cpp
    sheet_corpus_test.cpp
    sheet_formulas_test.cpp
    sheet_random_test.cpp
    sheet_text_test.cpp
    styles_test.cpp
    LINK orrery_xlsx)
