orrery_test(xls_compound_tests
    built_compound.cpp
    compound_corpus_test.cpp
    compound_file_test.cpp
    compound_writer_test.cpp
    directory_tree_test.cpp
    encryption_test.cpp
    tree_check.cpp
    LINK orrery_xls)
if(NOT WIN32) # a small disk is mounted
    target_sources(xls_compound_tests PRIVATE compound_disk_posix_test.cpp)
endif()
