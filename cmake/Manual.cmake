# A program's manual pages and completions, made of what it says under --help.

find_package(Python3 3.7 COMPONENTS Interpreter)

# install_completion(<program> <shell> <file> <folder> [<command>...]): for a shell that is not asked at run time.
function(install_completion program shell file folder)
    set(made "${CMAKE_CURRENT_BINARY_DIR}/manual/${file}")
    add_custom_command(OUTPUT "${made}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
            "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/packaging/completion" ${shell} $<TARGET_FILE:${program}> ${ARGN}
            > "${made}.new"
        COMMAND ${CMAKE_COMMAND} -E rename "${made}.new" "${made}"
        DEPENDS ${program} "${PROJECT_SOURCE_DIR}/packaging/completion" "${PROJECT_SOURCE_DIR}/packaging/help_text.py"
        VERBATIM)
    add_custom_target(${program}_${shell} ALL DEPENDS "${made}")
    install(FILES "${made}" DESTINATION "${CMAKE_INSTALL_DATADIR}/${folder}")
endfunction()

# install_manual(<program> [COMMANDS <command>...]): COMMANDS are those that the program's --help does not list, each
# as one word of the command line with what always follows it: "bars import".
function(install_manual program)
    cmake_parse_arguments(ARG "" "" COMMANDS ${ARGN})
    if(NOT Python3_FOUND)
        message(STATUS "python3 is missing: ${program} is installed without its manual page")
        return()
    endif()
    set(maker "${PROJECT_SOURCE_DIR}/packaging/manual-page")
    set(pages)
    foreach(language en zh)
        set(page "${CMAKE_CURRENT_BINARY_DIR}/manual/${language}/${program}.1")
        file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/manual/${language}")
        add_custom_command(OUTPUT "${page}"
            COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
                "${Python3_EXECUTABLE}" "${maker}" $<TARGET_FILE:${program}> ${language} ${PROJECT_VERSION} ${ARG_COMMANDS}
                > "${page}.new"
            COMMAND ${CMAKE_COMMAND} -E rename "${page}.new" "${page}"
            DEPENDS ${program} "${maker}" "${PROJECT_SOURCE_DIR}/packaging/help_text.py"
            VERBATIM)
        list(APPEND pages "${page}")
    endforeach()
    add_custom_target(${program}_manual ALL DEPENDS ${pages})
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/manual/en/${program}.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/manual/zh/${program}.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/zh_CN/man1")

    string(REGEX REPLACE "([a-z]+) ([a-z]+)" "\\1" commands "${ARG_COMMANDS}")
    string(REGEX REPLACE "([a-z]+) ([a-z]+)" "\\2" after_command "${ARG_COMMANDS}")
    configure_file("${PROJECT_SOURCE_DIR}/packaging/completion.bash.in" completion.bash @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/completion.bash" RENAME ${program}
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
    install_completion(${program} zsh _${program} zsh/vendor-completions ${ARG_COMMANDS})
    install_completion(${program} fish ${program}.fish fish/vendor_completions.d ${ARG_COMMANDS})
endfunction()
