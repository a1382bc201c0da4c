# desktop-file-validate, failing on any error but one: Debian 12's validator (0.26) predates
# the SingleMainWindow key of the entry format 1.5, which desktops read and we set.
execute_process(COMMAND ${VALIDATOR} ${FILE}
  OUTPUT_VARIABLE out ERROR_VARIABLE out RESULT_VARIABLE rc)
message("${out}")
string(REGEX MATCHALL "error: [^\n]*" errors "${out}")
# More than one main category lists the app twice in some menus: only a hint to the validator.
string(REGEX MATCHALL "hint: [^\n]*more than one main category[^\n]*" doubled "${out}")
list(APPEND errors ${doubled})
list(FILTER errors EXCLUDE REGEX "key \"SingleMainWindow\"")
if(errors OR (rc AND NOT out MATCHES "SingleMainWindow"))
  message(FATAL_ERROR "desktop entry invalid")
endif()
