orrery_test(xlsx_formula_tests
    defined_names_test.cpp
    document_titles_test.cpp
    formula_lexer_test.cpp
    formula_move_test.cpp
    formula_properties_test.cpp
    formula_test.cpp
    references_test.cpp
    workbook_part_test.cpp
    LINK orrery_xlsx)
