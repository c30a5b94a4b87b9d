# discover_suites(<program> [PROPERTIES <name> <value>...]): each suite of a program that is made with GoogleTest is a test of
# that name to ctest. A program starts once for each of its suites then and not for each test, which is most of what many tests
# cost.
set(list_suites_script "${CMAKE_CURRENT_LIST_DIR}/ListSuites.cmake")

function(discover_suites program)
    cmake_parse_arguments(arg "" "" "PROPERTIES" ${ARGN})
    set(list "${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake")
    add_custom_command(TARGET ${program} POST_BUILD
        COMMAND "${CMAKE_COMMAND}"
            -D "PROGRAM=$<TARGET_FILE:${program}>"
            -D "PROPERTIES=${arg_PROPERTIES}"
            -D "LIST=${list}"
            -P "${list_suites_script}"
        BYPRODUCTS "${list}"
        VERBATIM)
    set(include "${CMAKE_CURRENT_BINARY_DIR}/${program}_include.cmake")
    file(WRITE "${include}"
        "if(EXISTS \"${list}\")\n  include(\"${list}\")\nelse()\n  add_test(${program}_NOT_BUILT ${program}_NOT_BUILT)\nendif()\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include}")
endfunction()
