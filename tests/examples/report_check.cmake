# Runs the demo host with --report OUT (and HOST_ARGS, a list) and expects exit code EXPECT_RC,
# a message on standard error, and no index.html in OUT.
execute_process(COMMAND "${HOST}" ${HOST_ARGS} --report "${OUT}" RESULT_VARIABLE rc ERROR_VARIABLE err)
if(NOT rc EQUAL EXPECT_RC)
  message(FATAL_ERROR "demo host exited with ${rc}, expected ${EXPECT_RC}: ${err}")
endif()
if(NOT err MATCHES "rk_demo_host: ")
  message(FATAL_ERROR "no message on standard error")
endif()
if(EXISTS "${OUT}/index.html")
  message(FATAL_ERROR "a refused run wrote ${OUT}/index.html")
endif()
