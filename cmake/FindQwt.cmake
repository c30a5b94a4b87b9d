# Finds Qwt for Qt 5 by its header and its library and defines the target Qwt::Qwt.
#
# Debian's pkg-config file asks for modules that its own package does not bring, and Homebrew builds a
# framework, so neither is asked. Qwt_ROOT may name another place.

set(qwt_prefixes)
if(APPLE)
    list(APPEND qwt_prefixes /opt/homebrew/opt/qwt-qt5 /usr/local/opt/qwt-qt5
        /opt/homebrew/opt/qwt /usr/local/opt/qwt)
endif()

find_path(Qwt_INCLUDE_DIR
    NAMES qwt_plot.h
    HINTS ${qwt_prefixes}
    PATH_SUFFIXES qwt qwt-qt5 qt5/qwt include/qwt lib/qwt.framework/Headers)
find_library(Qwt_LIBRARY
    NAMES qwt-qt5 qwt
    HINTS ${qwt_prefixes}
    PATH_SUFFIXES lib)

if(Qwt_INCLUDE_DIR AND EXISTS "${Qwt_INCLUDE_DIR}/qwt_global.h")
    file(STRINGS "${Qwt_INCLUDE_DIR}/qwt_global.h" qwt_version_line REGEX "define QWT_VERSION_STR")
    string(REGEX REPLACE ".*\"([^\"]+)\".*" "\\1" Qwt_VERSION "${qwt_version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt
    REQUIRED_VARS Qwt_LIBRARY Qwt_INCLUDE_DIR
    VERSION_VAR Qwt_VERSION)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION "${Qwt_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Qwt_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES "Qt5::Widgets")
    if(Qwt_LIBRARY MATCHES "\\.framework")
        set_property(TARGET Qwt::Qwt PROPERTY IMPORTED_LOCATION "${Qwt_LIBRARY}/qwt")
    endif()
endif()
mark_as_advanced(Qwt_INCLUDE_DIR Qwt_LIBRARY)
