# The layer rule. A file may include headers of its own folder's layer and of the
# layers below it; above platform/ nothing but these and the standard library.
# Run with -DSOURCE_DIR=<src>; fails with every offending line.

# Layer of each folder, lowest first.
set(layer_platform 0)
set(layer_startup 1)
set(layer_wizard 2)
set(layer_imports 3)
set(layer_masters 3)
set(layer_updates 3)
set(layer_app 4)

# Headers with a "." or "/" are no standard headers.
set(standard_header "^[a-z_0-9]+$")
set(faults "")

file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
foreach(source IN LISTS sources)
  string(REGEX MATCH "^[a-z]+" folder "${source}")
  if(NOT DEFINED layer_${folder})
    list(APPEND faults "${source}: folder '${folder}' belongs to no layer")
    continue()
  endif()
  string(REGEX MATCH "^platform/(embedded|access|odbc|xls|qt|console|local)/" in_adapter "${source}")
  file(STRINGS ${SOURCE_DIR}/${source} includes REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS includes)
    if(line MATCHES "\"([^\"]+)\"")
      set(header ${CMAKE_MATCH_1})
      string(REGEX MATCH "^[a-z]+" target "${header}")
      # A missing file below a layer's folder is for the compiler to report.
      if(NOT EXISTS ${SOURCE_DIR}/${header} AND NOT header MATCHES "^(platform|startup|wizard|imports|masters|updates|app)/")
        list(APPEND faults "${source}: \"${header}\" is not a path below src/")
      elseif(layer_${target} GREATER layer_${folder})
        list(APPEND faults "${source}: includes ${header} of a higher layer")
      elseif(layer_${target} EQUAL layer_${folder} AND NOT target STREQUAL folder)
        list(APPEND faults "${source}: includes ${header} of a sister layer")
      elseif(NOT in_adapter AND NOT folder STREQUAL "app"
             AND header MATCHES "^platform/(embedded|access|odbc|xls|qt|console|local)/")
        list(APPEND faults "${source}: includes the adapter header ${header}")
      endif()
    elseif(line MATCHES "<([^>]+)>")
      set(header ${CMAKE_MATCH_1})
      if(NOT header MATCHES "${standard_header}" AND NOT in_adapter AND NOT folder STREQUAL "app")
        list(APPEND faults "${source}: <${header}> is not of the standard library")
      endif()
    endif()
  endforeach()
endforeach()

if(faults)
  list(JOIN faults "\n  " text)
  message(FATAL_ERROR "Layer rule broken:\n  ${text}")
endif()
