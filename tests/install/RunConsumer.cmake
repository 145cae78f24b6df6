# Installs the built library into a scratch prefix, then builds and runs a small application
# against it twice: once through the CMake package and once through pkg-config.
file(REMOVE_RECURSE ${WORK_DIR})
set(PREFIX ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(LAST_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${PREFIX})

# The CMake package.
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR}/cmake-build -G Ninja
    -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-build)
run(${WORK_DIR}/cmake-build/consumer)
if(NOT LAST_OUTPUT MATCHES "consumer ok")
  message(FATAL_ERROR "unexpected output from the CMake-built consumer: ${LAST_OUTPUT}")
endif()

# pkg-config.
find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB PC_DIR ${PREFIX}/lib*/pkgconfig ${PREFIX}/lib/*/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "${PC_DIR}")
run(${PKG_CONFIG} --cflags --libs vorn)
string(STRIP "${LAST_OUTPUT}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
find_program(CXX NAMES c++ g++ REQUIRED)
run(${CXX} ${SOURCE_DIR}/tests/install/consumer/main.cpp -o ${WORK_DIR}/pc-consumer ${flags})
string(REGEX REPLACE "/pkgconfig$" "" LIB_DIR "${PC_DIR}")
set(ENV{LD_LIBRARY_PATH} "${LIB_DIR}")
run(${WORK_DIR}/pc-consumer)
if(NOT LAST_OUTPUT MATCHES "consumer ok")
  message(FATAL_ERROR "unexpected output from the pkg-config consumer: ${LAST_OUTPUT}")
endif()
