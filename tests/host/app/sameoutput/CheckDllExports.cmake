# Reads the DLL's export table with objdump and fails unless it names exactly the entry
# function.
execute_process(COMMAND x86_64-w64-mingw32-objdump -p ${MODULE}
                OUTPUT_VARIABLE dump RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "objdump failed on ${MODULE}")
endif()
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\n([^\n]+\n)*" table "${dump}")
string(REGEX MATCHALL "\t\\[ *[0-9]+\\] [A-Za-z_0-9@]+" entries "${table}")
set(names)
foreach(entry ${entries})
    string(REGEX REPLACE ".*\\] " "" name "${entry}")
    list(APPEND names ${name})
endforeach()
if(NOT names STREQUAL "ZtOpPluginEntryztodpds")
    message(FATAL_ERROR "${MODULE} exports '${names}', not ZtOpPluginEntryztodpds alone")
endif()
