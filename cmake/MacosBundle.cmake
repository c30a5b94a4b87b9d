# Installed as an application of macOS: the folders of one in place of bin, lib and share, and what the system reads of it.

set(CMAKE_INSTALL_BINDIR Contents/MacOS)
set(CMAKE_INSTALL_LIBDIR Contents/Frameworks)
set(CMAKE_INSTALL_DATAROOTDIR Contents/Resources)

configure_file("${PROJECT_SOURCE_DIR}/packaging/macos/Info.plist.in" Info.plist @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/Info.plist" DESTINATION Contents COMPONENT terminal)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/macos/org.tradechartobject.trademodule.plist"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/tradechartobject" COMPONENT module)
