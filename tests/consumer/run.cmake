# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT

# Installs the build into a fresh prefix, builds the consumer against it, and runs the result on
# the example. Called with BUILD_DIR, SOURCE_DIR, WORK_DIR and EXAMPLE.

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
    if(NOT output MATCHES "^molk_0 [0-9]+ in, [0-9]+ out\nmolk_1 [0-9]+ in, [0-9]+ out\n$")
        message(FATAL_ERROR "listcores printed:\n${output}")
    endif()
endforeach()
