include(CMakePackageConfigHelpers)

# install_library(<target>): installs a library for programs outside this tree. They find it with
# find_package(<target>), as <target>::<target>, or with pkg-config <target>. The target's folder holds
# <target>Config.cmake.in and <target>.pc.in; headers are installed by the folder itself.
function(install_library target)
    set(config_dir "${CMAKE_INSTALL_LIBDIR}/cmake/${target}")
    configure_package_config_file(${target}Config.cmake.in ${target}Config.cmake
        INSTALL_DESTINATION "${config_dir}")
    write_basic_package_version_file(${target}ConfigVersion.cmake COMPATIBILITY SameMinorVersion)
    # relative, so that an installation can be moved
    file(RELATIVE_PATH prefix_from_pc_file "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    configure_file(${target}.pc.in ${target}.pc @ONLY)

    install(TARGETS ${target} EXPORT ${target}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library)
    install(EXPORT ${target}Targets NAMESPACE ${target}:: DESTINATION "${config_dir}" COMPONENT development)
    install(FILES
        "${CMAKE_CURRENT_BINARY_DIR}/${target}Config.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/${target}ConfigVersion.cmake"
        DESTINATION "${config_dir}" COMPONENT development)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${target}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endfunction()
