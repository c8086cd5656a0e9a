# orrery_resources(PROGRAM DESCRIPTION): gives a Windows program its icon, version and manifest. Windows
# shows the description as the program's name. Does nothing on other systems.
set(ORRERY_RESOURCES_DIR ${CMAKE_CURRENT_LIST_DIR})

function(orrery_resources program description)
    if(NOT WIN32)
        return()
    endif()
    set(ORRERY_PROGRAM ${program})
    set(ORRERY_DESCRIPTION ${description})
    set(icon)
    set(ORRERY_ICON_STATEMENT)
    if(ORRERY_WINDOW) # a build without the window needs no tools for pictures
        set(icon ${PROJECT_BINARY_DIR}/packaging/icons/orrery.ico)
        set(ORRERY_ICON_STATEMENT "ORRERY ICON \"${icon}\"")
        add_dependencies(${program} icons)
    endif()
    set(ORRERY_MANIFEST ${ORRERY_RESOURCES_DIR}/orrery.manifest)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${program}.rc)
    configure_file(${ORRERY_RESOURCES_DIR}/orrery.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources} PROPERTIES
        OBJECT_DEPENDS "${icon};${ORRERY_MANIFEST}")
    target_sources(${program} PRIVATE ${resources})
    if(MSVC) # the linker would add a manifest of its own
        target_link_options(${program} PRIVATE /MANIFEST:NO)
    endif()
endfunction()
