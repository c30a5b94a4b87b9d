# Finds the MQTT client library: target Mosquitto::Mosquitto, variable Mosquitto_VERSION.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    pkg_check_modules(PC_Mosquitto QUIET libmosquitto)
endif()

find_path(Mosquitto_INCLUDE_DIR mosquitto.h HINTS ${PC_Mosquitto_INCLUDE_DIRS})
find_library(Mosquitto_LIBRARY mosquitto HINTS ${PC_Mosquitto_LIBRARY_DIRS})
set(Mosquitto_VERSION "${PC_Mosquitto_VERSION}")
mark_as_advanced(Mosquitto_INCLUDE_DIR Mosquitto_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Mosquitto
    REQUIRED_VARS Mosquitto_LIBRARY Mosquitto_INCLUDE_DIR
    VERSION_VAR Mosquitto_VERSION
    REASON_FAILURE_MESSAGE "install libmosquitto-dev (Debian) or mosquitto (Homebrew)")

if(Mosquitto_FOUND AND NOT TARGET Mosquitto::Mosquitto)
    add_library(Mosquitto::Mosquitto UNKNOWN IMPORTED)
    set_target_properties(Mosquitto::Mosquitto PROPERTIES
        IMPORTED_LOCATION "${Mosquitto_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Mosquitto_INCLUDE_DIR}")
endif()
