# How every target of this project is compiled: link project_options, privately.

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

# An installed program finds its libraries beside itself, wherever the tree was put.
if(APPLE)
    set(CMAKE_INSTALL_RPATH "@loader_path/../${CMAKE_INSTALL_LIBDIR};@loader_path")
else()
    set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")
endif()

add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>")
target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(project_options INTERFACE
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
    target_compile_options(project_options INTERFACE -Werror)
endif()
if(TRADECHART_COVERAGE)
    target_compile_options(project_options INTERFACE --coverage)
    target_link_options(project_options INTERFACE --coverage)
endif()
if(TRADECHART_SANITIZE)
    list(JOIN TRADECHART_SANITIZE "," sanitizers)
    target_compile_options(project_options INTERFACE
        -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # A host's virtual tables may be laid by hand, without the type information that this would look for.
    target_compile_options(project_options INTERFACE -fno-sanitize=vptr)
    target_link_options(project_options INTERFACE -fsanitize=${sanitizers})
endif()
