# Tiny packages, most of them broken in one way, for the tests of the package loader. They lie in a
# folder of their own, away from what a host loads.
foreach(fixture good same_id wrong_version raising raising_number empty_entry no_plugin null_plugin
        no_entry)
  kk_package(fixture_${fixture} ${CMAKE_CURRENT_LIST_DIR}/packages/${fixture}.cpp ROOMS kk_contract)
  set_target_properties(fixture_${fixture} PROPERTIES OUTPUT_NAME ${fixture} PREFIX ""
                        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/fixtures
                        DISABLE_PRECOMPILE_HEADERS ON)
  if(TARGET test_host_common)
    add_dependencies(test_host_common fixture_${fixture})
  endif()
endforeach()
