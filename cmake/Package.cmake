# What `cmake --install` lays out and how other projects find it. The package is named uicontrol; the controls and the host's
# contract are always there, `framework`, `refhost` and `host_conformance` are its components, each with targets of its own.

# Debian's own place for libraries, below any prefix: Qt looks for plug-ins there, and nowhere else.
if(EXISTS /etc/debian_version AND CMAKE_LIBRARY_ARCHITECTURE)
  set(CMAKE_INSTALL_LIBDIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}" CACHE PATH "Object code libraries")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(uicontrol_headers_dir ${CMAKE_INSTALL_INCLUDEDIR}/uicontrol)
set(uicontrol_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/uicontrol)
# Until the first stable release every minor version may change the binary interface.
set(uicontrol_abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# Lays headers under the include root of their folder, as the sources name them.
function(install_headers folder)
  foreach(header IN LISTS ARGN)
    get_filename_component(below "${header}" DIRECTORY)
    install(FILES ${header} DESTINATION ${uicontrol_headers_dir}/${folder}/${below} COMPONENT development)
  endforeach()
endfunction()

# install_library(TARGET component COMPONENT HEADERS headers that users of the library include)
function(install_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "COMPONENT" "HEADERS")
  get_target_property(type ${name} TYPE)
  if(NOT type STREQUAL "INTERFACE_LIBRARY" AND NOT name STREQUAL PROJECT_NAME)
    # "framework" alone would be anybody's among the libraries of a system.
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${PROJECT_NAME}_${name})
  endif()
  if(type STREQUAL "SHARED_LIBRARY")
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${uicontrol_abi})
  endif()
  target_include_directories(${name} INTERFACE "$<INSTALL_INTERFACE:${uicontrol_headers_dir}/${name}>")
  install(TARGETS ${name} EXPORT ${arg_COMPONENT}Targets
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install_headers(${name} ${arg_HEADERS})
endfunction()

# Targets, package files of CMake and pkg-config. Called once, after every install_library().
function(install_package)
  foreach(component IN LISTS ARGN)
    install(EXPORT ${component}Targets NAMESPACE uicontrol:: DESTINATION ${uicontrol_cmake_dir} COMPONENT development)
  endforeach()
  # A static library drags its private parts into the link of whoever uses it.
  if(BUILD_SHARED_LIBS)
    set(static_package FALSE)
  else()
    set(static_package TRUE)
  endif()
  configure_package_config_file(cmake/uicontrolConfig.cmake.in ${PROJECT_BINARY_DIR}/uicontrolConfig.cmake
                                INSTALL_DESTINATION ${uicontrol_cmake_dir} PATH_VARS uicontrol_headers_dir)
  # SameMinorVersion, for the reason of uicontrol_abi.
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/uicontrolConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/uicontrolConfig.cmake ${PROJECT_BINARY_DIR}/uicontrolConfigVersion.cmake
                cmake/HostMetaObjects.cmake
          DESTINATION ${uicontrol_cmake_dir} COMPONENT development)
endfunction()

# install_pkgconfig(NAME [HOST] DESCRIPTION text REQUIRES other modules LIBRARY its library FOLDERS include roots)
# HOST: the library holds a share of the host. Of shared libraries only: what a static one drags into a link, CMake knows.
function(install_pkgconfig name)
  if(NOT BUILD_SHARED_LIBS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "HOST" "DESCRIPTION;REQUIRES;LIBRARY" "FOLDERS")
  set(pc_name ${name})
  # From the file itself, so that it tells the truth below whatever prefix it is installed.
  file(RELATIVE_PATH pc_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
  set(pc_description "${arg_DESCRIPTION}")
  set(pc_requires "${arg_REQUIRES}")
  set(pc_libs "-L\${libdir} -l${arg_LIBRARY}")
  if(arg_HOST AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
    # The controls need it though the program may call nothing of it. One word, since pkg-config gathers equal ones.
    set(pc_libs "-L\${libdir} -Wl,--push-state,--no-as-needed,-l${arg_LIBRARY},--pop-state")
  endif()
  set(pc_cflags "")
  foreach(folder IN LISTS arg_FOLDERS)
    string(APPEND pc_cflags " -I\${includedir}/uicontrol/${folder}")
  endforeach()
  configure_file(cmake/module.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
