# A library with walls around it. Who links it can include the headers listed in it, under their paths from the
# top of the tree, and nothing else; it can include what it links itself. So who may include whom is written
# once, as what links what, and the compiler holds it.
#
# folder_library(<name> <STATIC|OBJECT|SHARED>
#     SOURCES <file>...      of the current folder, headers too
#     [PUBLIC <library>...]  whose headers this library's headers include
#     [PRIVATE <library>...] whose headers its sources alone include
#     [MOC])                 some of its classes are Qt's
function(folder_library name type)
    cmake_parse_arguments(arg "MOC" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} ${type} ${arg_SOURCES})
    if(arg_MOC)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    endif()
    open_headers(${name} PUBLIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC Qt5::Core ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} project_options)
endfunction()

# open_headers(<target> <PUBLIC|INTERFACE> <file>...): who links the target can include those of the files that are headers.
function(open_headers target scope)
    set(include_path "${PROJECT_BINARY_DIR}/include/${target}")
    file(REMOVE_RECURSE "${include_path}")
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    foreach(file IN LISTS ARGN)
        if(file MATCHES "\\.h$" AND NOT IS_ABSOLUTE "${file}")
            get_filename_component(link "${include_path}/${folder}/${file}" ABSOLUTE)
            get_filename_component(link_folder "${link}" DIRECTORY)
            file(MAKE_DIRECTORY "${link_folder}")
            file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${file}" "${link}" SYMBOLIC)
        endif()
    endforeach()
    target_include_directories(${target} ${scope} "$<BUILD_INTERFACE:${include_path}>")
endfunction()

# open_folder(<target> <folder>): what is in a folder at the top of the tree includes itself under its path from there.
function(open_folder target folder)
    set(include_path "${PROJECT_BINARY_DIR}/include/${target}")
    file(MAKE_DIRECTORY "${include_path}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${folder}" "${include_path}/${folder}" SYMBOLIC)
    target_include_directories(${target} INTERFACE "${include_path}")
endfunction()
