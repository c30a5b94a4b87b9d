# python_with(<variable> <module>...): the first Python that has these modules, which may be in another than the one that is first
# in the path; empty for none.
function(python_with variable)
    list(JOIN ARGN ", " modules)
    set(${variable} "" PARENT_SCOPE)
    foreach(python python3 /usr/bin/python3)
        execute_process(COMMAND "${python}" -c "import ${modules}" RESULT_VARIABLE lacks_some OUTPUT_QUIET ERROR_QUIET)
        if(lacks_some STREQUAL "0")
            set(${variable} "${python}" PARENT_SCOPE)
            return()
        endif()
    endforeach()
endfunction()
