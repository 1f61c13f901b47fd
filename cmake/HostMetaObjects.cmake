# Headers of host/ with Q_OBJECT get their meta-object in the one library that implements them. Listing them as private
# sources of that library makes its AUTOMOC process them; any other library that listed them would make a second,
# different meta-object of the same class.
function(host_meta_objects target)
  foreach(header IN LISTS ARGN)
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/host/${header}")
  endforeach()
endfunction()
