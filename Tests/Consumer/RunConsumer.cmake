# Installs the project into a scratch prefix (not the default one), builds a host against it
# with find_package and another with pkg-config, and runs both and the installed vlchart with no
# VLCHART_* variable: each must succeed and print no warning.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
set(clean_env ${CMAKE_COMMAND} -E env --unset=VLCHART_HOME --unset=VLCHART_LOG
  --unset=VLCHART_LOG_LEVEL --unset=VLCHART_TRACE)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(LAST_OUTPUT "${out}" PARENT_SCOPE)
  set(LAST_ERROR "${err}" PARENT_SCOPE)
endfunction()

# A host run: exit 0 and nothing on standard error.
function(run_quietly)
  run(${clean_env} ${ARGN})
  if(NOT LAST_ERROR STREQUAL "")
    message(FATAL_ERROR "${ARGN} wrote to standard error:\n${LAST_ERROR}")
  endif()
  message(STATUS "${LAST_OUTPUT}")
endfunction()

run(${CMAKE_COMMAND} --build ${BINARY_DIR} --target VlBase VlChartBase vlchart)
run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix})

run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run_quietly(${WORK_DIR}/build/consumer)

file(GLOB pcfile ${prefix}/lib*/pkgconfig/vlchartbase.pc ${prefix}/lib*/*/pkgconfig/vlchartbase.pc)
if(NOT pcfile)
  message(FATAL_ERROR "no pkg-config file installed")
endif()
get_filename_component(pcdir ${pcfile} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pcdir})
run(pkg-config --cflags --libs vlchartbase)
string(STRIP "${LAST_OUTPUT}" pkg_flags)
separate_arguments(pkg_flags UNIX_COMMAND "${pkg_flags}")
separate_arguments(cxx_flags UNIX_COMMAND "${CXX_FLAGS}")
run(pkg-config --variable=libdir vlchartbase)
string(STRIP "${LAST_OUTPUT}" libdir)
# The .pc file carries no runpath; the host puts one on its own link line.
run(${CXX} -std=c++17 ${cxx_flags} ${CONSUMER_SOURCE}/consumer.cpp ${pkg_flags}
    -Wl,-rpath,${libdir} -o ${WORK_DIR}/consumer-pkgconfig)
run_quietly(${WORK_DIR}/consumer-pkgconfig)

run_quietly(${prefix}/bin/vlchart env)
