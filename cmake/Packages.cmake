# What is installed comes in four packages, each a component of the installation: a folder's own is named by its
# in_package(). `scripts/package` builds and checks them for Debian; other systems take the components as they are.

# in_package(<name>): what this folder installs goes into that package, unless an install() names another.
macro(in_package name)
    set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME "${name}")
endmacro()

# finish_packages(): called last, when every folder has said what it installs.
function(finish_packages)
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGE_NAME tradechartobject)
    set(CPACK_PACKAGE_VENDOR "the tradechartobject authors")
    set(CPACK_PACKAGE_CONTACT "the tradechartobject authors <maintainers@tradechartobject.example>")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_STRIP_FILES ON)
    set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/FinishTree.cmake")
    set(CPACK_VERBATIM_VARIABLES ON)

    set(CPACK_COMPONENTS_ALL library development terminal module)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/lib")
    set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/packaging/Debian.cmake")
    include(CPack)
endfunction()
