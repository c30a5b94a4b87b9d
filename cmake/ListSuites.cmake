# Writes to LIST a test for each suite of the program PROGRAM, with the properties PROPERTIES.
execute_process(
    COMMAND "${PROGRAM}" --gtest_list_tests
    OUTPUT_VARIABLE output
    RESULT_VARIABLE result
    TIMEOUT 60)
if(NOT result EQUAL 0)
    file(REMOVE "${PROGRAM}") # so that the next build asks again
    message(FATAL_ERROR "${PROGRAM} does not tell its tests (${result}):\n${output}")
endif()

# A suite begins its line and ends with a dot; its tests are indented.
string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\." suites "${output}")
set(script "")
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "[\n.]" "" suite "${suite}")
    string(APPEND script "add_test([=[${suite}]=] [==[${PROGRAM}]==] [=[--gtest_filter=${suite}.*]=])\n")
    if(PROPERTIES)
        string(APPEND script "set_tests_properties([=[${suite}]=] PROPERTIES")
        foreach(word IN LISTS PROPERTIES)
            string(APPEND script " [==[${word}]==]")
        endforeach()
        string(APPEND script ")\n")
    endif()
endforeach()
file(WRITE "${LIST}" "${script}")
