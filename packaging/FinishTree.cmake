# Makes the trees of the packages ready: run by CPack once all is staged.

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(source "${CMAKE_CURRENT_LIST_DIR}/..")
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    message(FATAL_ERROR "SOURCE_DATE_EPOCH must say when this was released: scripts/package does that")
endif()
set(epoch "$ENV{SOURCE_DATE_EPOCH}")

# An installed program finds its libraries where the system looks for them; the path beside itself is for trees that
# were put elsewhere.
function(forget_runtime_paths tree)
    file(GLOB_RECURSE files LIST_DIRECTORIES false "${tree}/usr/bin/*" "${tree}/usr/lib/*.so")
    foreach(file IN LISTS files)
        file(READ "${file}" magic LIMIT 4 HEX)
        if(magic STREQUAL "7f454c46")
            file(RPATH_REMOVE FILE "${file}")
        endif()
    endforeach()
endfunction()

# Licence and changes, where Debian's users look for them.
function(add_papers tree package)
    set(papers "${tree}/usr/share/doc/${package}")
    file(READ "${source}/.reuse/dep5" copyright)
    file(STRINGS "${source}/LICENSES/MIT.txt" lines)
    set(licence "License: MIT\n")
    foreach(line IN LISTS lines)
        string(APPEND licence " ${line}\n")
    endforeach()
    string(REGEX REPLACE "\n \n" "\n .\n" licence "${licence}")
    file(WRITE "${papers}/copyright" "${copyright}\n${licence}
License: CC0-1.0
 On Debian systems the text of this licence is in /usr/share/common-licenses/CC0-1.0.\n")
    execute_process(COMMAND date --utc --rfc-email "--date=@${epoch}" OUTPUT_VARIABLE date)
    file(WRITE "${papers}/changelog.Debian" "tradechartobject (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * What is new is in changelog.gz.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}")
    file(COPY_FILE "${source}/CHANGELOG.md" "${papers}/changelog")
    run(gzip --best --no-name "${papers}/changelog" "${papers}/changelog.Debian")
endfunction()

function(press_manual_pages tree)
    file(GLOB_RECURSE pages "${tree}/usr/share/man/*.1")
    foreach(page IN LISTS pages)
        run(gzip --best --no-name "${page}")
    endforeach()
endfunction()

# What is outside of the installation's prefix on every system but this one.
function(add_settings tree package)
    if(package STREQUAL "trademodule")
        file(MAKE_DIRECTORY "${tree}/etc/logrotate.d")
        file(COPY_FILE "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/module/logrotate" "${tree}/etc/logrotate.d/trademodule")
    endif()
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(tree "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}")
    string(TOUPPER "${component}" name)
    forget_runtime_paths("${tree}")
    add_papers("${tree}" "${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
    press_manual_pages("${tree}")
    add_settings("${tree}" "${CPACK_DEBIAN_${name}_PACKAGE_NAME}")
    # Two builds of one source give the same bytes.
    run(find "${tree}" -exec touch --no-dereference "--date=@${epoch}" "{}" +)
endforeach()
