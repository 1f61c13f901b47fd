# The Debian packages that `cpack -G DEB` writes into the build folder: the libraries, what building against them takes, and
# the practice terminal.

set(CPACK_PACKAGE_NAME uicontrol)
set(CPACK_PACKAGE_VENDOR "the uicontrol project")
set(CPACK_PACKAGE_CONTACT "the uicontrol project <maintainers@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL runtime development)
if(UICONTROL_TERMINAL)
  list(APPEND CPACK_COMPONENTS_ALL terminal)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libuicontrol${uicontrol_abi})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Controls for trading terminals: shared libraries")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libuicontrol-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "qtbase5-dev, libboost-thread-dev, libboost-date-time-dev, liblog4cxx-dev, pkg-config")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Controls for trading terminals: headers and package files")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_NAME uicontrol-terminal)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_DEPENDS "libqt5sql5-sqlite, fonts-noto-cjk")
set(CPACK_DEBIAN_TERMINAL_PACKAGE_RECOMMENDS "qttranslations5-l10n")
set(CPACK_COMPONENT_TERMINAL_DESCRIPTION "A terminal that trades on paper, over recorded or simulated markets")
set(CPACK_COMPONENT_TERMINAL_DEPENDS runtime)

include(CPack)
