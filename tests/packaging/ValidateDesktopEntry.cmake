# desktop-file-validate, failing on any error but one: Debian 12's validator (0.26) predates
# the SingleMainWindow key of the entry format 1.5, which desktops read and we set.
execute_process(COMMAND ${VALIDATOR} ${FILE}
  OUTPUT_VARIABLE out ERROR_VARIABLE out RESULT_VARIABLE rc)
message("${out}")
string(REGEX MATCHALL "error: [^\n]*" errors "${out}")
list(FILTER errors EXCLUDE REGEX "key \"SingleMainWindow\"")
if(errors OR (rc AND NOT out MATCHES "SingleMainWindow"))
  message(FATAL_ERROR "desktop entry invalid")
endif()
