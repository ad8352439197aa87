# The dictionary registry is built while the library loads. A probe process is started without
# VLCHART_HOME, with an empty home, broken settings, broken dictionaries, the default and the real
# data: loading must never crash the host, and what it serves and logs must match Data/dict/probe/.
add_executable(KGS57RegistryLoadProbe ${CMAKE_CURRENT_SOURCE_DIR}/Cases/KGS57RegistryLoadProbe.cpp)
target_link_libraries(KGS57RegistryLoadProbe PRIVATE VlChartBase VlBase)
set(S57_LOAD_DIR ${CMAKE_CURRENT_BINARY_DIR}/s57-load)
file(MAKE_DIRECTORY ${S57_LOAD_DIR}/empty-home)
set(S57_DICT ${CMAKE_CURRENT_SOURCE_DIR}/Data/dict)

function(s57_load_probe name home)
  add_test(NAME KGS57RegistryLoad.${name} COMMAND ${CMAKE_COMMAND} -E env ${home}
    VLCHART_LOG=${S57_LOAD_DIR}/${name}.log $<TARGET_FILE:KGS57RegistryLoadProbe> ${ARGN})
  set_tests_properties(KGS57RegistryLoad.${name} PROPERTIES SKIP_RETURN_CODE 77)
endfunction()

s57_load_probe(WithoutHome --unset=VLCHART_HOME)
s57_load_probe(WithEmptyHome VLCHART_HOME=${S57_LOAD_DIR}/empty-home/ ${S57_DICT}/probe/empty-home.txt)
s57_load_probe(WithBrokenDictionaries VLCHART_HOME=${S57_DICT}/broken-dicts/
  ${S57_DICT}/probe/broken-dicts.txt)
s57_load_probe(WithBrokenSettings VLCHART_HOME=${S57_DICT}/broken-settings/
  ${S57_DICT}/probe/broken-settings.txt)
s57_load_probe(WithDefaultData VLCHART_HOME=${PROJECT_SOURCE_DIR}/Data/
  ${S57_DICT}/probe/default-data.txt)
s57_load_probe(WithRealData VLCHART_HOME=${PROJECT_SOURCE_DIR}/../shared/data/s52-real/
  ${S57_DICT}/probe/real-data.txt)
