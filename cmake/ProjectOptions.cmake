# How the targets of this project are compiled: each links project_options, privately; test programs link
# test_options.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_MACOSX_RPATH ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

# An installed program finds its libraries and data beside itself, wherever the tree was put.
file(RELATIVE_PATH path_to_libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
file(RELATIVE_PATH path_to_data "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_DATADIR}")
if(APPLE)
    set(CMAKE_INSTALL_RPATH "@loader_path/${path_to_libraries};@loader_path")
else()
    set(CMAKE_INSTALL_RPATH "$ORIGIN/${path_to_libraries};$ORIGIN")
endif()

add_library(common_options INTERFACE)
target_compile_options(common_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(common_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_NO_JAVA_STYLE_ITERATORS
    QT_NO_KEYWORDS
    QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS)

if(TRADECHART_WARNINGS_AS_ERRORS)
    target_compile_options(common_options INTERFACE -Werror)
endif()
if(TRADECHART_COVERAGE)
    target_compile_options(common_options INTERFACE --coverage)
    target_link_options(common_options INTERFACE --coverage)
endif()
if(TRADECHART_SANITIZE)
    list(JOIN TRADECHART_SANITIZE "," sanitizers)
    target_link_options(common_options INTERFACE -fsanitize=${sanitizers})
endif()

# add_options(<name> <sanitizer>...)
function(add_options name)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE common_options)
    if(ARGN)
        list(JOIN ARGN "," sanitizers)
        # A host's virtual tables may be laid by hand, without the type information that vptr would look for.
        target_compile_options(${name} INTERFACE
            -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer -fno-sanitize=vptr)
    endif()
endfunction()

add_options(project_options ${TRADECHART_SANITIZE})

# Tests are built more often than they run: nothing in them is optimised, and they are searched for what they
# read out of bounds only, as a host would, not for undefined arithmetic of their own.
set(test_sanitizers ${TRADECHART_SANITIZE})
list(REMOVE_ITEM test_sanitizers undefined)
add_options(test_options ${test_sanitizers})
target_compile_options(test_options INTERFACE "$<$<CONFIG:Release>:-O0>")
