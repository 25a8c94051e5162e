# Fails when a source includes a header of a layer above its own.
# Run as: cmake -DUB=<templates/ui_blocks> -DTOOLS=<ui_tools> -P check_layers.cmake
#
# A layer is a directory; its rank orders the layers bottom to top. A file may include
# headers of its own directory and of directories with a lower rank. Directories of one
# rank (rows/ and page_blocks/: block builders; kinds/: their table and what a builder
# gets) may include each other.

cmake_policy(VERSION 3.20)

set(RANK_base 0)
set(RANK_gen_res 1)
set(RANK_iconlib 2)
set(RANK_spec 3)
set(RANK_assets 4)
set(RANK_controls 5)
set(RANK_checks 6)
set(RANK_rows 7)
set(RANK_page_blocks 7)
set(RANK_kinds 7)
set(RANK_page 8)
set(RANK_logic 9)
set(RANK_driver 10)
# Only the driver runs the sibling tools.
set(RANK_json2img 10)
set(RANK_check_all 10)
set(RANK_design_lint 10)
# The live preview server runs the driver.
set(RANK_serve 11)

# The sibling tools stand beside the composer: they may use base, gen_res and the
# layout model of json2img, never a composer layer.
set(TOOL_ALLOWED_json2img base gen_res json2img)
set(TOOL_ALLOWED_check_all base gen_res json2img design_lint check_all)
set(TOOL_ALLOWED_design_lint base gen_res json2img design_lint)

# The composer's class header (one page run) is for the page flow that implements it and
# the driver that runs it; builders, checks, controls and logic use the small headers.
set(HUB_USERS page driver)

set(KNOWN_EXCEPTIONS)

set(errors "")
file(GLOB_RECURSE sources ${UB}/*.h ${UB}/*.cc ${TOOLS}/*.h ${TOOLS}/*.cc)
foreach(src ${sources})
  if(src MATCHES "^${UB}/")
    file(RELATIVE_PATH rel ${UB} ${src})
  else()
    file(RELATIVE_PATH rel ${TOOLS} ${src})
  endif()
  if(NOT rel MATCHES "/")
    continue()  # compose.h itself, the hub
  endif()
  if(rel STREQUAL "driver/main.cc")
    continue()  # the program's entry stands above every layer, the preview server included
  endif()
  string(REGEX REPLACE "/.*" "" layer "${rel}")
  file(STRINGS ${src} includes REGEX "^#include \"")
  foreach(line ${includes})
    string(REGEX REPLACE "^#include \"([^\"]*)\".*" "\\1" inc "${line}")
    if("${rel}:${inc}" IN_LIST KNOWN_EXCEPTIONS)
      continue()
    endif()
    if(inc STREQUAL "compose.h")
      if(NOT layer IN_LIST HUB_USERS)
        list(APPEND errors "${rel}: includes the composer header compose.h")
      endif()
      continue()
    endif()
    if(NOT inc MATCHES "/")
      continue()  # test helpers beside the file
    endif()
    string(REGEX REPLACE "/.*" "" target "${inc}")
    if(DEFINED TOOL_ALLOWED_${layer})
      if(NOT target IN_LIST TOOL_ALLOWED_${layer})
        list(APPEND errors "${rel}: the ${layer} tool includes ${inc}")
      endif()
    elseif(DEFINED RANK_${layer})
      if(NOT DEFINED RANK_${target})
        list(APPEND errors "${rel}: includes ${inc}, which belongs to no composer layer")
      elseif(RANK_${target} GREATER RANK_${layer})
        list(APPEND errors "${rel}: ${layer}/ includes ${inc} from a higher layer")
      endif()
    endif()
  endforeach()
endforeach()

if(errors)
  list(JOIN errors "\n  " text)
  message(FATAL_ERROR "includes that run up the layers:\n  ${text}")
endif()
