# Installs the build, moves it elsewhere, and builds and runs a program against it: once with
# find_package, once with pkg-config. Then starts the installed programs.

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "'${ARGN}' failed (${result}):\n${output}${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_greeting program)
    run("${program}")
    if(NOT output STREQUAL "refused HolderCostPrice SH\n")
        message(FATAL_ERROR "${program} printed: ${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/first")
file(RENAME "${WORK}/first" "${WORK}/moved")

file(GLOB_RECURSE installed_headers "${WORK}/moved/include/*.h")
run("${CMAKE_COMMAND}" "-DHEADERS=${installed_headers}" -P "${CMAKE_CURRENT_LIST_DIR}/CheckDeclarations.cmake")

run("${CMAKE_COMMAND}" -S "${CONSUMER}" -B "${WORK}/consumer" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${WORK}/moved" "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${CMAKE_COMMAND}" --build "${WORK}/consumer")
expect_greeting("${WORK}/consumer/consumer")

set(ENV{PKG_CONFIG_PATH} "${WORK}/moved/${LIBDIR}/pkgconfig")
run(pkg-config --cflags --libs tradechartobject)
separate_arguments(flags UNIX_COMMAND "${output} ${FLAGS}")
run("${COMPILER}" -std=c++17 -fPIC "${CONSUMER}/main.cpp" -o "${WORK}/by-pkg-config" ${flags}
    "-Wl,-rpath,${WORK}/moved/${LIBDIR}" "-Wl,-rpath-link,${WORK}/moved/${LIBDIR}")
expect_greeting("${WORK}/by-pkg-config")

if(PROGRAMS)
    set(bin "${WORK}/moved/${BINDIR}")
    set(ledger "${WORK}/account.db")
    set(ENV{QT_QPA_PLATFORM} offscreen)
    run("${bin}/trademodule" --version)
    run("${bin}/trademodule" --ledger "${ledger}"
        import "${WORK}/moved/${DATADIR}/tradechartobject/examples/statement.csv")
    # The terminal finds bars, overlays and trading module by itself, and draws what they tell.
    run("${bin}/tradeterminal" --snapshot "${WORK}/picture.png" --size 640x360 --overlays cost,trades
        --ledger "${ledger}")
    if(NOT EXISTS "${WORK}/picture.png")
        message(FATAL_ERROR "the installed terminal has drawn nothing")
    endif()

    # The example of a terminal, built from what is installed alone: it shows every overlay, and the checker has nothing to say of it.
    set(samples "${WORK}/moved/${DATADIR}/tradechartobject/examples")
    run("${bin}/trademodule" --ledger "${ledger}" place 600519 buy 1400 100)
    foreach(compiler IN ITEMS "${COMPILER}" "${OTHER_COMPILER}")
        if(NOT compiler OR (FLAGS AND NOT compiler STREQUAL COMPILER)) # sanitizers of one compiler are not the other one's
            continue()
        endif()
        get_filename_component(name "${compiler}" NAME)
        set(host "${WORK}/host-${name}")
        run("${CMAKE_COMMAND}" -S "${samples}/host" -B "${host}" -G "${GENERATOR}" "-DCMAKE_PREFIX_PATH=${WORK}/moved"
            "-DCMAKE_CXX_COMPILER=${compiler}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
        run("${CMAKE_COMMAND}" --build "${host}")
        # by its own name, which the folder of the checker has before the library's
        set(ENV{LD_LIBRARY_PATH} "${WORK}/moved/${LIBDIR}/tradechartobject-check")
        set(ENV{TRADECHARTOBJECT_CHECK_REPORT} "${host}/report.txt")
        run("${CMAKE_CURRENT_LIST_DIR}/run-host" "${bin}/trademodule" "${ledger}" "${host}" "${samples}")
        unset(ENV{LD_LIBRARY_PATH})
        unset(ENV{TRADECHARTOBJECT_CHECK_REPORT})
        run("${PICTURE_COLOURS}" "${host}/picture.png" "#ff8c00" "#ff0000" "#00ff00" "#00aaff")
        file(READ "${host}/report.txt" report)
        if(NOT report MATCHES "no rule broken; 3 overlays")
            message(FATAL_ERROR "the checker says of the example: ${report}")
        endif()
    endforeach()
endif()
