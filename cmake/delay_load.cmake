# Libraries of the system that are loaded when first used.
#
# A program that starts looks for its libraries in its own folder first, whatever lies there; only
# those that Windows keeps loaded (its "known DLLs") come from the system's folder always. The
# others are loaded later, when the program has told Windows to look in that folder alone
# (SetDefaultDllDirectories in its entry point).

# Links `target`, and what links it, with the functions of `dll` named. None may take a floating
# point number: those registers do not outlive the loading.
function(tonvale_delay_load target dll)
    string(TOLOWER delay_${dll} name)
    list(JOIN ARGN "\n" functions)
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
    file(CONFIGURE OUTPUT ${folder}/${name}.def CONTENT "LIBRARY ${dll}\nEXPORTS\n${functions}\n")
    add_custom_command(OUTPUT ${folder}/lib${name}.a DEPENDS ${folder}/${name}.def
        COMMAND ${CMAKE_DLLTOOL} --input-def ${name}.def --output-delaylib lib${name}.a
        WORKING_DIRECTORY ${folder} VERBATIM)
    add_custom_target(${target}_${name} DEPENDS ${folder}/lib${name}.a)
    add_dependencies(${target} ${target}_${name})
    target_link_libraries(${target} PUBLIC ${folder}/lib${name}.a delayimp)
endfunction()
