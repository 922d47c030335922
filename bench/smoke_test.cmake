# Runs the bench on a handful of processes and looks whether its figures are all there. What
# they are is nobody's business here: a test that depends on speed fails by chance.
#
#   cmake -D BENCH=<program> -D JSON=<file to write> -P smoke_test.cmake
execute_process(COMMAND ${BENCH} --parts=refresh,work,steps,credentials,list --processes=5,20 --rounds=2 --json=${JSON}
                RESULT_VARIABLE status OUTPUT_VARIABLE table)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${BENCH} ended with ${status}\n${table}")
endif()
file(READ ${JSON} json)

function(expect_number)
  string(JSON type ERROR_VARIABLE error TYPE "${json}" ${ARGN})
  if(NOT type STREQUAL "NUMBER")
    message(FATAL_ERROR "no number at ${ARGN}: ${error}\n${json}")
  endif()
endfunction()

foreach(count 5 20)
  expect_number(ratios scan/floor@${count})
  expect_number(ratios refresh/floor@${count})
  expect_number(ratios "refresh with AI work/without@${count}")
  expect_number(ratios "refresh/floor, cold@${count}")
  expect_number(milliseconds floor@${count})
  expect_number(memory "sampler memory@${count} (MB)")
  expect_number(spread scan/floor@${count} 0)
endforeach()
foreach(search names formats URLs programs)
  expect_number(credentials "${search} of 64 KiB (ms)")
endforeach()
expect_number(list "filter of 10,000 rows: the dearest letter (ms)")
foreach(step classify name redact mask sort "build menu")
  expect_number(steps "${step}, ns per process")
  expect_number(steps "${step}, allocations per process")
endforeach()
