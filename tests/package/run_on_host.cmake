# Configures the library in SOURCE in the folder BINARY, which may be left from the last time, builds some of its test
# programs and the random driver, and runs them.
#   cmake -DSOURCE=FOLDER -DBINARY=FOLDER "-DARGUMENTS=-DNAME=VALUE..." "-DPROGRAMS=TEST..." -P run_on_host.cmake
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${BINARY}" ${ARGUMENTS} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${BINARY}" --parallel 2 --target ${PROGRAMS} tst_monkey
    COMMAND_ERROR_IS_FATAL ANY)
list(JOIN PROGRAMS "|" names)
execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir "${BINARY}" -R "^(${names})$" -j 2 --no-tests=error
        --timeout 600 --output-on-failure
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${BINARY}/tests/monkey/tst_monkey" --events 3000 --seed 1 COMMAND_ERROR_IS_FATAL ANY)
