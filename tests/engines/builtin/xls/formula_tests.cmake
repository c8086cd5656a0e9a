orrery_test(xls_formula_tests
    corpus_streams.cpp
    formula_corpus_test.cpp
    formula_map_test.cpp
    formula_places_test.cpp
    formula_tokens_test.cpp
    shared_strings_test.cpp
    unicode_string_test.cpp
    LINK orrery_xls)
