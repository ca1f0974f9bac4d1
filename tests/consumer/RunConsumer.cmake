# Installs the built library into a scratch prefix, then configures, builds and runs an
# outside project against it through find_package, and compiles it once more through
# pkg-config.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "command failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  message(STATUS "${out}")
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
if(CONSUMER_TOOLCHAIN)
  # Cross-built: the same toolchain, the package named directly (the toolchain confines package
  # searches to the target's root), and the program run through the emulator next to the
  # installed DLL.
  run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
      -DCMAKE_TOOLCHAIN_FILE=${CONSUMER_TOOLCHAIN} -DCMAKE_BUILD_TYPE=Release
      -DRLXPropertyHelper_DIR=${prefix}/lib/cmake/RLXPropertyHelper)
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
  file(GLOB installed_dlls ${prefix}/bin/*.dll)
  if(NOT installed_dlls)
    message(FATAL_ERROR "no DLL installed under ${prefix}/bin")
  endif()
  file(COPY ${installed_dlls} DESTINATION ${WORK_DIR}/build)
  run(${CONSUMER_EMULATOR} ${WORK_DIR}/build/consumer.exe)
  return()
endif()
run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release
    "-DCMAKE_CXX_FLAGS=${CONSUMER_CXX_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib:${prefix}/lib64 ${WORK_DIR}/build/consumer)

# pkg-config: the .pc file gives the include directory and the library.
find_program(PKG_CONFIG pkg-config)
find_program(CXX_COMPILER NAMES c++ g++ clang++)
if(PKG_CONFIG AND CXX_COMPILER)
  file(GLOB pc_dirs ${prefix}/lib*/pkgconfig ${prefix}/lib/*/pkgconfig)
  string(REPLACE ";" ":" pc_path "${pc_dirs}")
  execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_path}
                  ${PKG_CONFIG} --cflags --libs RLXPropertyHelper
                  RESULT_VARIABLE rc OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "pkg-config does not know RLXPropertyHelper")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  separate_arguments(extra UNIX_COMMAND "${CONSUMER_CXX_FLAGS}")
  run(${CXX_COMPILER} -std=c++17 ${extra} ${CONSUMER_SOURCE_DIR}/main.cpp ${flags} -o ${WORK_DIR}/consumer_pc)
  run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib:${prefix}/lib64 ${WORK_DIR}/consumer_pc)
endif()
