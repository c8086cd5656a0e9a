orrery_test(xls_drawing_tests
    corpus_streams.cpp
    drawing_corpus_test.cpp
    drawing_group_test.cpp
    drawing_places_test.cpp
    embedded_objects_test.cpp
    sheet_tables_test.cpp
    LINK orrery_xls)
