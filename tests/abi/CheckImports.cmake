# Compares what the built library takes from others with what every terminal has: the bus client's
# operations, which may be a terminal's own, and QtCore.

set(expected
    _ZN18LocalCommunication8EndPoint10disconnectEv
    _ZN18LocalCommunication8EndPoint11sendMessageE10QByteArrayS1_S1_
    _ZN18LocalCommunication8EndPoint15messageReceivedE10QByteArrayS1_S1_
    _ZN18LocalCommunication8EndPoint16staticMetaObjectE
    _ZN18LocalCommunication8EndPoint7connectE7QString
    _ZN18LocalCommunication8EndPoint7requestE10QByteArrayS1_
    _ZN18LocalCommunication8EndPoint9subscribeE10QByteArray5QListIS1_E
    _ZN18LocalCommunication8EndPoint9subscribeE10QByteArrayS1_
    _ZN18LocalCommunication8EndPointC1EP7QObject
    _ZN18LocalCommunication8EndPointD1Ev)
set(expected_libraries "endpoint|Qt5Core|QtCore|stdc\\+\\+|c\\+\\+|gcc_s|c|m|pthread|System|asan|ubsan|gcov")

if(CMAKE_HOST_APPLE)
    execute_process(COMMAND "${NM}" -uj "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND otool -L "${LIBRARY}" OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n\t]+ \\(compatibility" needed "${needed}")
else()
    execute_process(COMMAND "${NM}" -D --undefined-only --format=just-symbols "${LIBRARY}"
        OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND "${READELF}" -d "${LIBRARY}" OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "NEEDED[^\n]*" needed "${needed}")
endif()

string(REGEX MATCHALL "_ZNK?18LocalCommunication[A-Za-z0-9_]*" taken "${symbols}")
set(missing ${expected})
list(REMOVE_ITEM missing ${taken})
set(surplus ${taken})
list(REMOVE_ITEM surplus ${expected})
if(missing OR surplus)
    message(FATAL_ERROR "of the bus client, not taken: ${missing}\ntaken beyond what terminals have: ${surplus}")
endif()

if(NOT needed)
    message(FATAL_ERROR "found no library that ${LIBRARY} needs: the list was not read")
endif()
list(FILTER needed EXCLUDE REGEX "(^|[/ [])(lib)?(${expected_libraries})([.]|\\]| )")
if(needed)
    message(FATAL_ERROR "needs libraries that a terminal may not have: ${needed}")
endif()
