# Options and warnings that every target of the project links as INTERFACE targets.

add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_17)
target_compile_definitions(project_options INTERFACE QT_NO_KEYWORDS QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII
                                                     BOOST_BIND_GLOBAL_PLACEHOLDERS)
find_package(Threads REQUIRED)
target_link_libraries(project_options INTERFACE Threads::Threads)

# Boost.Asio's stand-alone fences are unknown to the thread sanitizer, and an error under GCC's -Wtsan; without them it uses
# the locks that it takes anyway.
if(UICONTROL_SANITIZE MATCHES "thread")
  target_compile_definitions(project_options INTERFACE BOOST_ASIO_DISABLE_FENCED_BLOCK)
endif()

add_library(project_warnings INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(project_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
  # With the thread sanitizer's calls in between, GCC 12 takes the move of an empty std::optional for a read of what was
  # never written. Every other preset keeps the warning.
  if(UICONTROL_SANITIZE MATCHES "thread")
    target_compile_options(project_warnings INTERFACE -Wno-maybe-uninitialized)
  endif()
  if(UICONTROL_WERROR)
    target_compile_options(project_warnings INTERFACE -Werror)
  endif()
  if(UICONTROL_SANITIZE)
    add_compile_options(-fsanitize=${UICONTROL_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${UICONTROL_SANITIZE})
  endif()
endif()

include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fno-semantic-interposition UICONTROL_NO_INTERPOSITION)

# A library of the project: hidden symbols, own export macro, its folder as the only include root that it adds.
function(project_library name)
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON CXX_EXTENSIONS OFF
                                           POSITION_INDEPENDENT_CODE ON AUTOMOC ON AUTORCC ON)
  string(TOUPPER ${name} upper)
  target_compile_definitions(${name} PRIVATE ${upper}_LIBRARY)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${name} PUBLIC ${upper}_STATIC)
  endif()
  if(UICONTROL_NO_INTERPOSITION)
    # Nobody puts another function in the place of an exported one: callers within the library need no table to find it.
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-fno-semantic-interposition>)
  endif()
  target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>")
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:project_options> $<BUILD_INTERFACE:project_warnings>)
  add_library(uicontrol::${name} ALIAS ${name})
endfunction()
