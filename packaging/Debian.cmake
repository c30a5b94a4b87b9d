# What Debian is told of each package: read by CPack when it packs.

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
if(NOT CPACK_DEBIAN_PACKAGE_RELEASE)
    set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)

set(exactly "(= ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libtradechartobject)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/library/triggers")
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "account's cost, trades and orders on a terminal's chart
A plug-in for chart terminals: cost line, buy and sell points and order
markers of the user's own account, which it asks for over a local message bus;
and the client of that bus.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS mosquitto)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtradechartobject-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libtradechartobject ${exactly}, qtbase5-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/library/triggers")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "headers for terminals that show these chart overlays
What a terminal or a trading module is built with: headers, and the
descriptions by which CMake and pkg-config find the library.")

set(CPACK_DEBIAN_TERMINAL_PACKAGE_NAME tradeterminal)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_DEPENDS "libtradechartobject ${exactly}, mosquitto, fonts-noto-cjk")
set(CPACK_DEBIAN_TERMINAL_PACKAGE_RECOMMENDS "trademodule ${exactly}")
set(CPACK_DEBIAN_TERMINAL_DESCRIPTION "chart terminal with one's own trades, orders and costs
Shows bars of days and minutes with what the account bought, sold and has on
order, from a broker's statement or from paper trading on a recorded day.")

set(CPACK_DEBIAN_MODULE_PACKAGE_NAME trademodule)
set(CPACK_DEBIAN_MODULE_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_MODULE_PACKAGE_DEPENDS "libtradechartobject ${exactly}, libqt5sql5-sqlite, tzdata, adduser")
set(CPACK_DEBIAN_MODULE_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/module/postinst"
    "${CMAKE_CURRENT_LIST_DIR}/module/prerm" "${CMAKE_CURRENT_LIST_DIR}/module/postrm"
    "${CMAKE_CURRENT_LIST_DIR}/module/conffiles")
set(CPACK_DEBIAN_MODULE_PACKAGE_SUGGESTS "libqt5sql5-psql, postgresql, logrotate, prometheus-node-exporter, sqlite3")
set(CPACK_DEBIAN_MODULE_DESCRIPTION "ledger of an account that answers a chart terminal
Reads brokers' statements into a ledger, reckons costs and results, answers
the charts' questions over a message bus and deals orders on paper.")
