# The resource compiler tells no dependencies: everything that resources are made of counts as one of
# `rc_file`.
function(tonvale_rc_depends_on_resources rc_file)
    set(folder ${CMAKE_SOURCE_DIR}/resources)
    file(GLOB files CONFIGURE_DEPENDS
        ${folder}/*.rc ${folder}/*.h ${folder}/*.bmp ${folder}/*.ico ${CMAKE_BINARY_DIR}/generated/*)
    list(REMOVE_ITEM files ${rc_file})
    set_source_files_properties(${rc_file} PROPERTIES OBJECT_DEPENDS "${files}")
endfunction()
