# Packaging checks: every public header compiles on its own, and hosts built against the
# installed package (find_package and pkg-config) run with no settings at all.

file(GLOB VL_PUBLIC_HEADERS CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/Include/Base/*.h ${PROJECT_SOURCE_DIR}/Include/ChartBase/*.h)
set(VL_HEADER_SOURCES)
foreach(header ${VL_PUBLIC_HEADERS})
  file(RELATIVE_PATH rel ${PROJECT_SOURCE_DIR}/Include ${header})
  string(MAKE_C_IDENTIFIER ${rel} id)
  set(src ${CMAKE_CURRENT_BINARY_DIR}/headers/${id}.cpp)
  file(CONFIGURE OUTPUT ${src} CONTENT "#include \"${rel}\"\n#include \"${rel}\"\n")
  list(APPEND VL_HEADER_SOURCES ${src})
endforeach()
add_library(VlHeaderCheck OBJECT EXCLUDE_FROM_ALL ${VL_HEADER_SOURCES})
target_include_directories(VlHeaderCheck PRIVATE ${PROJECT_SOURCE_DIR}/Include)
add_test(NAME PublicHeaders.CompileAlone
  COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target VlHeaderCheck)

set(VL_CONSUMER_FLAGS "")
if(VLCHART_SANITIZE)
  set(VL_CONSUMER_FLAGS "-fsanitize=address,undefined")
endif()
add_test(NAME Package.InstalledHosts
  COMMAND ${CMAKE_COMMAND}
    -DBINARY_DIR=${PROJECT_BINARY_DIR}
    -DCONSUMER_SOURCE=${CMAKE_CURRENT_SOURCE_DIR}/Consumer
    -DWORK_DIR=${CMAKE_CURRENT_BINARY_DIR}/consumer
    -DCXX_FLAGS=${VL_CONSUMER_FLAGS}
    -DBUILD_TYPE=${CMAKE_BUILD_TYPE}
    -DCXX=${CMAKE_CXX_COMPILER}
    -P ${CMAKE_CURRENT_SOURCE_DIR}/Consumer/RunConsumer.cmake)
# Both build in the project's binary directory: keep them apart from each other.
set_tests_properties(PublicHeaders.CompileAlone Package.InstalledHosts PROPERTIES
  RESOURCE_LOCK project_build TIMEOUT 900)
