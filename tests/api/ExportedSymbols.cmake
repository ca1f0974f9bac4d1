# Checks the dynamic symbol table of the shared library: every plain function present
# unmangled, the exported classes present, no internal helper visible.
# Usage: cmake -DLIBRARY=<path> -DNM=<nm> -P ExportedSymbols.cmake

if(NOT LIBRARY OR NOT EXISTS "${LIBRARY}")
  message(FATAL_ERROR "library not found: '${LIBRARY}'")
endif()
if(NOT NM)
  set(NM nm)
endif()

execute_process(COMMAND ${NM} -D --defined-only "${LIBRARY}"
  OUTPUT_VARIABLE raw RESULT_VARIABLE raw_result)
execute_process(COMMAND ${NM} -D -C --defined-only "${LIBRARY}"
  OUTPUT_VARIABLE demangled RESULT_VARIABLE demangled_result)
if(NOT raw_result EQUAL 0 OR NOT demangled_result EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()

set(failures "")

include(${CMAKE_CURRENT_LIST_DIR}/ExportExpectations.cmake)
set(plain_functions ${rlx_plain_functions})
foreach(name IN LISTS plain_functions)
  if(NOT raw MATCHES "(^|\n)[0-9a-f]+ T ${name}(\n|$)")
    list(APPEND failures "plain function not exported unmangled: ${name}")
  endif()
endforeach()

rlx_require_class_symbols("${demangled}" failures ${rlx_exported_class_symbols}
  "typeinfo for TargetOperations::BooleanProperty"
  "typeinfo for TargetOperations::IntegerProperty"
  "typeinfo for TargetOperations::LocationProperty"
  "typeinfo for TargetOperations::LocationProperty2"
  "typeinfo for TargetOperations::ReferenceCount"
  "typeinfo for ReferenceCounting::IReferenceCount"
  "typeinfo for TargetOperations::IProperty"
  "typeinfo for TargetOperations::IStringProperty"
  "vtable for Kw::Mbr::Korva::korvaError")

# Internal helpers: none of them may reach the dynamic symbol table.
set(internal_patterns ${rlx_internal_symbol_patterns})
rlx_refuse_internal_symbols("${demangled}" failures ${internal_patterns})

if(failures)
  list(JOIN failures "\n  " report)
  message(FATAL_ERROR "dynamic symbol table of ${LIBRARY}:\n  ${report}")
endif()
list(LENGTH plain_functions plain_count)
message(STATUS "${plain_count} plain functions exported unmangled; no internal helper exported")
