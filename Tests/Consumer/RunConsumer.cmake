# Installs the project into a scratch prefix, builds the consumer against it and runs it.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(LAST_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --build ${BINARY_DIR} --target VlBase VlChartBase)
run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)

file(GLOB pcfile ${prefix}/lib*/pkgconfig/vlchartbase.pc)
if(NOT pcfile)
  message(FATAL_ERROR "no pkg-config file installed")
endif()
file(READ ${pcfile} pc)
if(NOT pc MATCHES "-lVlChartBase")
  message(FATAL_ERROR "pkg-config file does not name the library:\n${pc}")
endif()

file(GLOB libdir LIST_DIRECTORIES true ${prefix}/lib*)
set(ENV{LD_LIBRARY_PATH} "${libdir}")
run(${WORK_DIR}/build/consumer ${prefix}/share/VlChartBase)
message(STATUS "${LAST_OUTPUT}")
