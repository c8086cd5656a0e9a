find_package(ZLIB REQUIRED)
orrery_test(xlsx_package_tests
    built_zip.cpp
    content_types_test.cpp
    corpus_package_test.cpp
    package_test.cpp
    part_names_test.cpp
    relationships_test.cpp
    xml_encoding_test.cpp
    xml_scanner_test.cpp
    xml_text_test.cpp
    zip_archive_test.cpp
    LINK orrery_xlsx ZLIB::ZLIB)
if(NOT WIN32) # what the system limits for a process, and what it counts
    target_sources(xlsx_package_tests PRIVATE zip_limits_posix_test.cpp)
endif()
