# Fails if the header that is made of a form isn't an output of the build: whatever includes it would be
# compiled with the old header at the first build after a change to the form.
execute_process(COMMAND ${NINJA} -C ${BUILD_DIR} -t targets all OUTPUT_VARIABLE outputs
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB forms ${FORMS_DIR}/*.ui)
if(NOT forms)
    message(FATAL_ERROR "There are no forms in ${FORMS_DIR}")
endif()
set(missing "")
foreach(form IN LISTS forms)
    cmake_path(GET form STEM name)
    if(NOT outputs MATCHES "/ui_${name}\\.h: ")
        string(APPEND missing "\n  ${form}")
    endif()
endforeach()
if(missing)
    message(FATAL_ERROR "The build doesn't know the headers of these:${missing}\n"
        "Name them behind FORMS in the library that includes them.")
endif()
