# The test framework is most of what a test's source reads, so each test target compiles it once. It is for whole
# builds from nothing; a build for daily work goes without and so finds a source that forgot an include.

# precompile_test_headers(<folder>): for the targets of the folder, and below, with enough sources to earn it.
function(precompile_test_headers folder)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(sources ${target} SOURCES)
        list(FILTER sources INCLUDE REGEX "\\.cpp$")
        list(LENGTH sources count)
        get_target_property(libraries ${target} LINK_LIBRARIES)
        if(count GREATER 3 AND "test_options" IN_LIST libraries)
            target_precompile_headers(${target} PRIVATE
                <QByteArray> <QDateTime> <QJsonDocument> <QJsonObject> <QString> <gmock/gmock.h>)
        endif()
    endforeach()
    get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(subfolder IN LISTS folders)
        precompile_test_headers("${subfolder}")
    endforeach()
endfunction()
