# Runs pdsreview on the sample review from its folder and compares the output with the
# expected file byte for byte. CASE json: the JSON document of an open; CASE tags: the
# tag file that an export after the open writes; CASE report: the report page written on
# three threads, against the one written on one. Paths the program echoes may differ in
# their separators only, so backslashes become slashes before the JSON is compared. The
# database beside the control file stays unread: the Windows build reads no attribute
# sources.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(exported ${WORK}/plant.tag)
if(CASE STREQUAL "report")
    foreach(threads 1 3)
        execute_process(COMMAND ${EMULATOR} ${PROGRAM} --quiet --no-attributes --threads ${threads}
                                open plant.dri select report ${WORK}/page${threads}.html
                        WORKING_DIRECTORY ${REVIEW}
                        OUTPUT_QUIET
                        ERROR_VARIABLE errors
                        RESULT_VARIABLE status)
        if(NOT status EQUAL 0)
            message(FATAL_ERROR "pdsreview report on ${threads} threads failed with ${status}: ${errors}")
        endif()
    endforeach()
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/page1.html ${WORK}/page3.html
                    RESULT_VARIABLE different)
    if(different)
        message(FATAL_ERROR "the page written on three threads differs from the one on one")
    endif()
    return()
endif()
if(CASE STREQUAL "json")
    set(steps open plant.dri)
else()
    set(steps open plant.dri export-tags ${exported})
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} --json --quiet --no-attributes ${steps}
                WORKING_DIRECTORY ${REVIEW}
                OUTPUT_FILE ${WORK}/out.json
                ERROR_VARIABLE errors
                RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "pdsreview ${steps} failed with ${status}: ${errors}")
endif()
if(CASE STREQUAL "json")
    file(READ ${WORK}/out.json output)
    string(REPLACE "\\\\" "/" output "${output}")
    file(WRITE ${WORK}/actual.json "${output}")
    set(actual ${WORK}/actual.json)
    set(expected ${EXPECTED}/plant.json)
else()
    set(actual ${exported})
    set(expected ${EXPECTED}/plant.tag)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${actual} ${expected}
                RESULT_VARIABLE different)
if(different)
    message(FATAL_ERROR "${actual} differs from ${expected}")
endif()
