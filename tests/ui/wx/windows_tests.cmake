# The same tests as Windows programs, and tests of what only Windows has. Cross-built, they run
# under Wine on a private display; on Windows they would press keys on the developer's own desktop.
orrery_resources(window_tests "Tests of Orrery's windows")
target_sources(window_tests PRIVATE windows_test.cpp)
add_dependencies(window_tests orrery)

# Used instead of other programs to open documents, addresses and the help; built beside the tests.
add_executable(opener WIN32 opener_windows.cpp)
target_link_libraries(opener PRIVATE orrery_util)
add_library(help_viewer MODULE help_viewer_windows.cpp)
target_link_libraries(help_viewer PRIVATE orrery_util)
set_target_properties(help_viewer PROPERTIES PREFIX "")
add_dependencies(window_tests opener help_viewer)

orrery_test(resources_tests resources_test.cpp LINK orrery_ui version)
add_dependencies(resources_tests orrery orrery-cli)

# window_test(NAME FILTER [ENVIRONMENT...]): runs all tests of a filter as one CTest test.
function(window_test name filter)
    add_test(NAME window.${name}
        COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/under_wine.sh $<TARGET_FILE:window_tests>
                --gtest_filter=${filter})
    set_tests_properties(window.${name} PROPERTIES TIMEOUT 1200 RESOURCE_LOCK windows-desktop
        ENVIRONMENT "${ARGN}")
endfunction()

if(CMAKE_CROSSCOMPILING)
    window_test(main MainWindowTest.*:PreviewWindowTest.*:ProposalWindowTest.*:MessageBoxTest.*:TipTest.*:AboutTest.*)
    window_test(parameters ParametersTest.*:HolidayTest.*:HolidayRulesTest.*:OwnDaysTest.*)
    window_test(checks *CheckTest.*)
    window_test(repeated RepeatedDialogsTest.*)
    window_test(windows WindowsTest.*)
    window_test(pictures-windows-100 *PicturesTest.* ORRERY_PICTURES_VARIANT=windows-100)
    window_test(pictures-windows-150 *PicturesTest.* ORRERY_PICTURES_VARIANT=windows-150
                ORRERY_DPI=144)
endif()
