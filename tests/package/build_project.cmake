# Configures and builds the project SOURCE in the folder BINARY, which may be left from the last time, and runs
# its program consumer if it has one.
#   cmake -DSOURCE=FOLDER -DBINARY=FOLDER "-DARGUMENTS=-DNAME=VALUE..." -P build_project.cmake
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${BINARY}" ${ARGUMENTS} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${BINARY}" COMMAND_ERROR_IS_FATAL ANY)
if(EXISTS "${BINARY}/consumer")
    execute_process(COMMAND "${BINARY}/consumer" COMMAND_ERROR_IS_FATAL ANY)
endif()
