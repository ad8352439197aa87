# The dictionary registry is built while the library loads. A probe process linked against it
# is started with and without VLCHART_HOME, and with missing, broken and complete dictionaries:
# loading must never crash the host, and the registry must serve what the files allow.

add_executable(KGS57RegistryLoadProbe ${CMAKE_CURRENT_SOURCE_DIR}/Cases/KGS57RegistryLoadProbe.cpp)
target_link_libraries(KGS57RegistryLoadProbe PRIVATE VlChartBase VlBase)

set(S57_LOAD_DIR ${CMAKE_CURRENT_BINARY_DIR}/s57-load)
file(MAKE_DIRECTORY ${S57_LOAD_DIR}/empty-home)
set(S57_PROBE $<TARGET_FILE:KGS57RegistryLoadProbe>)

add_test(NAME KGS57RegistryLoad.WithoutHome
  COMMAND ${CMAKE_COMMAND} -E env --unset=VLCHART_HOME VLCHART_LOG=${S57_LOAD_DIR}/without-home.log
    ${S57_PROBE} any)
add_test(NAME KGS57RegistryLoad.WithEmptyHome
  COMMAND ${CMAKE_COMMAND} -E env VLCHART_HOME=${S57_LOAD_DIR}/empty-home/
    VLCHART_LOG=${S57_LOAD_DIR}/empty-home.log
    ${S57_PROBE} empty "--log-has=chart setting file does not found !" --log-has=EAg001
    --log-has=EAg002)
add_test(NAME KGS57RegistryLoad.WithBrokenDictionaries
  COMMAND ${CMAKE_COMMAND} -E env VLCHART_HOME=${CMAKE_CURRENT_SOURCE_DIR}/Data/dict/broken-dicts/
    VLCHART_LOG=${S57_LOAD_DIR}/broken-dicts.log
    ${S57_PROBE} empty --log-has=EAg001 --log-has=EAg002)
add_test(NAME KGS57RegistryLoad.WithBrokenSettings
  COMMAND ${CMAKE_COMMAND} -E env VLCHART_HOME=${CMAKE_CURRENT_SOURCE_DIR}/Data/dict/broken-settings/
    VLCHART_LOG=${S57_LOAD_DIR}/broken-settings.log
    ${S57_PROBE} empty --log-has=EAg001)
add_test(NAME KGS57RegistryLoad.WithDefaultData
  COMMAND ${CMAKE_COMMAND} -E env VLCHART_HOME=${PROJECT_SOURCE_DIR}/Data/
    VLCHART_LOG=${S57_LOAD_DIR}/default-data.log
    ${S57_PROBE} loaded)
if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/../shared/data/s52-real)
  add_test(NAME KGS57RegistryLoad.WithRealData
    COMMAND ${CMAKE_COMMAND} -E env VLCHART_HOME=${PROJECT_SOURCE_DIR}/../shared/data/s52-real/
      VLCHART_LOG=${S57_LOAD_DIR}/real-data.log
      ${S57_PROBE} loaded 286)
endif()

# The default log sink appends: start every run from empty logs so old lines prove nothing.
add_test(NAME KGS57RegistryLoad.ClearLogs
  COMMAND ${CMAKE_COMMAND} -E rm -f ${S57_LOAD_DIR}/without-home.log ${S57_LOAD_DIR}/empty-home.log
    ${S57_LOAD_DIR}/broken-dicts.log ${S57_LOAD_DIR}/broken-settings.log
    ${S57_LOAD_DIR}/default-data.log ${S57_LOAD_DIR}/real-data.log)
set_tests_properties(KGS57RegistryLoad.ClearLogs PROPERTIES FIXTURES_SETUP s57_load_logs)
get_property(_s57_tests DIRECTORY PROPERTY TESTS)
foreach(_t ${_s57_tests})
  if(_t MATCHES "^KGS57RegistryLoad\\.With")
    set_tests_properties(${_t} PROPERTIES FIXTURES_REQUIRED s57_load_logs)
  endif()
endforeach()
