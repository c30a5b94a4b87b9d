# Qt's headers, and the test framework's, are most of what a source reads. A build from nothing compiles them once
# for all targets that are compiled alike; a build for daily work goes without and so finds a source that forgot
# an include.

set(core_headers
    <QByteArray> <QCoreApplication> <QDateTime> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QRegularExpression>
    <QString> <QStringList> <QTimer> <QVector> <algorithm> <chrono> <functional> <memory> <optional> <vector>)
file(WRITE "${PROJECT_BINARY_DIR}/precompiled/nothing.cpp" "int main() { return 0; }\n")

# precompile(<name> <library|program> LINKS <target>... HEADERS <header>...): a program's code is compiled otherwise
# than a library's, so each kind has its own.
function(precompile name kind)
    cmake_parse_arguments(arg "" "" "LINKS;HEADERS" ${ARGN})
    if(kind STREQUAL "program")
        add_executable(${name} "${PROJECT_BINARY_DIR}/precompiled/nothing.cpp")
    else()
        add_library(${name} OBJECT "${PROJECT_BINARY_DIR}/precompiled/nothing.cpp")
    endif()
    target_link_libraries(${name} PRIVATE ${arg_LINKS})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# precompiled_for(<target> <result>): the name of those that fit the target, or nothing.
function(precompiled_for target result)
    get_target_property(type ${target} TYPE)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    get_target_property(own_options ${target} COMPILE_OPTIONS)
    set(${result} "" PARENT_SCOPE)
    if(own_options)
        return() # compiled like no other
    elseif("test_options" IN_LIST libraries AND "GTest::gmock" IN_LIST libraries)
        set(${result} precompiled_tests PARENT_SCOPE)
    elseif(type MATCHES "(STATIC|OBJECT)_LIBRARY" AND "project_options" IN_LIST libraries)
        if("Qt5::Widgets" IN_LIST libraries)
            set(${result} precompiled_widgets PARENT_SCOPE)
        elseif("Qt5::Core" IN_LIST libraries)
            set(${result} precompiled_core PARENT_SCOPE)
        endif()
    endif()
endfunction()

# precompile_headers_below(<folder>): for the targets of the folder and of those in it.
function(precompile_headers_below folder)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        precompiled_for(${target} precompiled)
        if(precompiled AND NOT target MATCHES "^precompiled_")
            target_precompile_headers(${target} REUSE_FROM ${precompiled})
        endif()
    endforeach()
    get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(subfolder IN LISTS folders)
        precompile_headers_below("${subfolder}")
    endforeach()
endfunction()

precompile(precompiled_core library LINKS Qt5::Core project_options HEADERS ${core_headers})
if(TRADECHART_BUILD_TERMINAL)
    find_package(Qt5 5.15 REQUIRED COMPONENTS Widgets)
    precompile(precompiled_widgets library LINKS Qt5::Widgets project_options
        HEADERS ${core_headers} <QApplication> <QMainWindow> <QPainter> <QWidget>)
endif()
if(BUILD_TESTING)
    find_package(GTest REQUIRED)
    precompile(precompiled_tests program LINKS Qt5::Core GTest::gmock test_options HEADERS ${core_headers} <gmock/gmock.h>)
endif()
precompile_headers_below("${PROJECT_SOURCE_DIR}")
