# orvex_bound_golden_program(<name> [<option>...]): the golden cases with each call of CImgproc through a binding. How
# values and errors cross it stands in binding.h of the folder that calls this.
function(orvex_bound_golden_program name)
    set(tests ${PROJECT_SOURCE_DIR}/tests)
    include(${tests}/golden/sources.cmake)
    set(calls ${tests}/bindings/bound_calls)
    set(calling ${golden_sources} ${tests}/support/operations.cpp)
    set_source_files_properties(${calling} PROPERTIES COMPILE_OPTIONS "-include;${calls}.h" OBJECT_DEPENDS ${calls}.h)
    add_executable(${name} ${ARGN} ${calls}.cpp ${calling})
    orvex_own(${name})
    target_include_directories(${name} PRIVATE . ${tests}/bindings ${tests}/golden ${tests}/support)
endfunction()
