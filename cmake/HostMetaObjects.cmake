# Headers of the host's contract with Q_OBJECT get their meta-object in the one target that implements them. Listing them as
# private sources of that target makes its AUTOMOC process them; any other target that listed them would make a second,
# different meta-object of the same class. Headers are named below uicontrol_host_dir, the folder of the contract.
function(host_meta_objects target)
  foreach(header IN LISTS ARGN)
    target_sources(${target} PRIVATE "${uicontrol_host_dir}/${header}")
  endforeach()
endfunction()
