# Checks the export table of the Windows DLL: every plain function present by its plain name,
# the exported classes present, no internal helper and nothing of the statically linked
# runtimes exported.
# Usage: cmake -DLIBRARY=<dll> -DOBJDUMP=<objdump> -DCXXFILT=<c++filt> -P DllExportTable.cmake

if(NOT LIBRARY OR NOT EXISTS "${LIBRARY}")
  message(FATAL_ERROR "library not found: '${LIBRARY}'")
endif()
if(NOT OBJDUMP OR NOT CXXFILT)
  message(FATAL_ERROR "OBJDUMP and CXXFILT are required")
endif()

execute_process(COMMAND ${OBJDUMP} -p "${LIBRARY}" OUTPUT_VARIABLE dump RESULT_VARIABLE dump_result)
if(NOT dump_result EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} -p failed on ${LIBRARY}")
endif()

# The name table: "[Ordinal/Name Pointer] Table" followed by lines "\t[   n] name".
string(FIND "${dump}" "[Ordinal/Name Pointer] Table" table_at)
if(table_at EQUAL -1)
  message(FATAL_ERROR "${LIBRARY} has no export name table")
endif()
string(SUBSTRING "${dump}" ${table_at} -1 table)
string(REPLACE "\n" ";" table_lines "${table}")
set(exported "")
foreach(line IN LISTS table_lines)
  if(line MATCHES "^[ \t]*\\[ *[0-9]+\\] ([^ \t]+)$")
    list(APPEND exported "${CMAKE_MATCH_1}")
  elseif(exported AND line STREQUAL "")
    break()
  endif()
endforeach()
list(LENGTH exported exported_count)
if(exported_count EQUAL 0)
  message(FATAL_ERROR "no exported names found in ${LIBRARY}")
endif()

list(JOIN exported "\n" exported_text)
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/dll_exports.txt" "${exported_text}\n")
execute_process(COMMAND ${CXXFILT} INPUT_FILE "${CMAKE_CURRENT_BINARY_DIR}/dll_exports.txt"
  OUTPUT_VARIABLE demangled RESULT_VARIABLE demangle_result)
if(NOT demangle_result EQUAL 0)
  message(FATAL_ERROR "${CXXFILT} failed")
endif()

set(failures "")

include(${CMAKE_CURRENT_LIST_DIR}/ExportExpectations.cmake)
set(plain_functions ${rlx_plain_functions})
foreach(name IN LISTS plain_functions)
  list(FIND exported "${name}" at)
  if(at EQUAL -1)
    list(APPEND failures "plain function not exported by its plain name: ${name}")
  endif()
endforeach()

rlx_require_class_symbols("${demangled}" failures ${rlx_exported_class_symbols})

# Internal helpers of the library, and the C++ and thread runtimes linked into it.
set(internal_patterns ${rlx_internal_symbol_patterns}
  "^DllMain$"
  "^pthread_"
  "^__cxa_"
  "^__gxx_"
  "^_Unwind_"
  "^std::"
  "__gnu_cxx")
rlx_refuse_internal_symbols("${demangled}" failures ${internal_patterns})

if(failures)
  list(JOIN failures "\n  " report)
  message(FATAL_ERROR "export table of ${LIBRARY}:\n  ${report}")
endif()
list(LENGTH plain_functions plain_count)
message(STATUS "${exported_count} names exported; the ${plain_count} plain functions by their plain names; no internal helper exported")
