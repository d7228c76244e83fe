# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT

# Installs the build into a fresh prefix, builds the consumer against it, and runs the result on
# a file. Called with BUILD_DIR, SOURCE_DIR, WORK_DIR, EXAMPLE and CXX_FLAGS.

function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " line)
        message(FATAL_ERROR "${line}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
step(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)

foreach(package "${WORK_DIR}/prefix" "${BUILD_DIR}")
    string(MD5 name "${package}")
    step(${CMAKE_COMMAND} -G Ninja -S ${SOURCE_DIR} -B ${WORK_DIR}/${name}
        -DCMAKE_PREFIX_PATH=${package} -DMolk_ROOT=${package} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
    step(${CMAKE_COMMAND} --build ${WORK_DIR}/${name})
    step(${WORK_DIR}/${name}/listcores ${EXAMPLE})
    if(NOT output STREQUAL "molk_0 2 in, 2 out\nmolk_7 1 in, 2 out\n")
        message(FATAL_ERROR "listcores printed:\n${output}")
    endif()
endforeach()
