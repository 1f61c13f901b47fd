# product_info(target): makes "buildinfo.h" for a target: version, revision, kind of build, and the versions of the libraries
# that the product is built with.
find_package(ICU REQUIRED COMPONENTS uc)
pkg_check_modules(minizip REQUIRED IMPORTED_TARGET minizip)
pkg_check_modules(xlsxwriter REQUIRED IMPORTED_TARGET xlsxwriter)
# Its package description counts releases only; the header has the version.
pkg_get_variable(xlsxwriter_header_folder xlsxwriter includedir)
if(EXISTS "${xlsxwriter_header_folder}/xlsxwriter.h")
  file(STRINGS "${xlsxwriter_header_folder}/xlsxwriter.h" xlsxwriter_line REGEX "define LXW_VERSION \"")
  if(xlsxwriter_line MATCHES "\"([^\"]+)\"")
    set(xlsxwriter_VERSION "${CMAKE_MATCH_1}")
  endif()
endif()

function(product_info target)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/buildinfo")
  add_custom_target(${target}_buildinfo
    COMMAND ${CMAKE_COMMAND}
      "-DSOURCE_DIR=${PROJECT_SOURCE_DIR}" "-DTEMPLATE=${PROJECT_SOURCE_DIR}/cmake/buildinfo.h.in"
      "-DOUTPUT=${folder}/buildinfo.h" "-DPRODUCT_VERSION=${PROJECT_VERSION}" "-DBUILD_TYPE=${CMAKE_BUILD_TYPE}"
      "-DBUILD_COMPILER=${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}" "-DBUILD_SYSTEM=${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR}"
      "-DQT_VERSION=${Qt5_VERSION}" "-DBOOST_VERSION=${Boost_VERSION}" "-DFMT_VERSION=${fmt_VERSION}"
      "-DLOG4CXX_VERSION=${log4cxx_VERSION}" "-DICU_VERSION=${ICU_VERSION}" "-DMINIZIP_VERSION=${minizip_VERSION}"
      "-DXLSXWRITER_VERSION=${xlsxwriter_VERSION}" "-DZLIB_VERSION=${ZLIB_VERSION_STRING}"
      "-DKARCHIVE_VERSION=${KF5Archive_VERSION}" "-DCURL_VERSION=${CURL_VERSION_STRING}"
      -P "${PROJECT_SOURCE_DIR}/cmake/BuildInfo.cmake"
    BYPRODUCTS "${folder}/buildinfo.h"
    COMMENT "Build information"
    VERBATIM)
  add_dependencies(${target} ${target}_buildinfo)
  target_include_directories(${target} PRIVATE "${folder}")
endfunction()
