# ComposePages: compose Moraine pages as part of a CMake build.
#
#   include(ComposePages)
#   compose_add_pages(<target> [ALL]
#     PROJECT <dir>                  # the Moraine project the pages are written into
#     [COMPOSE <compose>]            # the executable or its target (default: ${COMPOSE_EXECUTABLE},
#                                    # else compose on PATH)
#     [UI_LAYOUT flat|res]           # default: res when a page has several sizes, else flat
#     [OPTIONS <option>...]          # more options for every page, e.g. --no-logic
#     PAGE <name> SPEC <spec.json> [SIZES <WxH>...]
#     [PAGE <name> SPEC <spec.json> [SIZES <WxH>...]]...)
#
# Each page becomes one custom command that runs compose with --depfile: its outputs are
# the page's layout files (ui/<name>.json, or ui/<W>x<H>/<name>.json per size) and its data
# header src/logic/<name>Data.h, and Ninja
# or Make run it again exactly when the spec, a file of the block library, the icon index,
# an icon the page uses or compose itself changed. <target> depends on every page.
# Relative SPEC paths are taken from the current source directory. Pictures and the logic
# skeleton are written beside the layouts but not declared as outputs (the logic file is
# the author's to edit, and a clean must never remove it). Needs CMake 3.20 (DEPFILE).

if(CMAKE_VERSION VERSION_LESS 3.20)
  message(FATAL_ERROR "ComposePages needs CMake 3.20 or newer (add_custom_command DEPFILE)")
endif()

set(COMPOSE_EXECUTABLE "" CACHE FILEPATH "The compose executable ComposePages runs")

function(compose_add_pages target)
  set(all "")
  set(project "")
  set(compose "${COMPOSE_EXECUTABLE}")
  set(ui_layout "")
  set(options "")
  set(pages "")  # page names, in order; each page's spec and sizes in _spec_<name>, _sizes_<name>
  set(mode "")
  set(page "")
  foreach(arg IN LISTS ARGN)
    if(arg STREQUAL "ALL" AND mode STREQUAL "")
      set(all ALL)
    elseif(arg MATCHES "^(PROJECT|COMPOSE|UI_LAYOUT|OPTIONS|PAGE|SPEC|SIZES)$")
      set(mode ${arg})
      if(mode STREQUAL "OPTIONS")
        set(options "")
      endif()
    elseif(mode STREQUAL "PROJECT")
      set(project "${arg}")
    elseif(mode STREQUAL "COMPOSE")
      set(compose "${arg}")
    elseif(mode STREQUAL "UI_LAYOUT")
      set(ui_layout "${arg}")
    elseif(mode STREQUAL "OPTIONS")
      list(APPEND options "${arg}")
    elseif(mode STREQUAL "PAGE")
      set(page "${arg}")
      if(page IN_LIST pages)
        message(FATAL_ERROR "compose_add_pages(${target}): page ${page} given twice")
      endif()
      list(APPEND pages "${page}")
      set(_spec_${page} "")
      set(_sizes_${page} "")
    elseif(mode STREQUAL "SPEC" AND NOT page STREQUAL "")
      get_filename_component(_spec_${page} "${arg}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    elseif(mode STREQUAL "SIZES" AND NOT page STREQUAL "")
      list(APPEND _sizes_${page} "${arg}")
    else()
      message(FATAL_ERROR "compose_add_pages(${target}): unexpected argument '${arg}'")
    endif()
  endforeach()

  if(project STREQUAL "")
    message(FATAL_ERROR "compose_add_pages(${target}): PROJECT is required")
  endif()
  get_filename_component(project "${project}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
  if(compose STREQUAL "")
    find_program(compose_found compose)
    if(NOT compose_found)
      message(FATAL_ERROR "compose_add_pages(${target}): no compose found; set COMPOSE or COMPOSE_EXECUTABLE")
    endif()
    set(compose "${compose_found}")
  endif()
  if(pages STREQUAL "")
    message(FATAL_ERROR "compose_add_pages(${target}): no PAGE given")
  endif()
  if(ui_layout STREQUAL "")
    set(ui_layout flat)
    foreach(page IN LISTS pages)
      list(LENGTH _sizes_${page} n)
      if(n GREATER 1)
        set(ui_layout res)
      endif()
    endforeach()
  endif()
  if(NOT ui_layout MATCHES "^(flat|res)$")
    message(FATAL_ERROR "compose_add_pages(${target}): UI_LAYOUT must be flat or res, not '${ui_layout}'")
  endif()

  set(all_outputs "")
  set(depdir "${CMAKE_CURRENT_BINARY_DIR}/compose_pages/${target}")
  foreach(page IN LISTS pages)
    if(_spec_${page} STREQUAL "")
      message(FATAL_ERROR "compose_add_pages(${target}): page ${page} has no SPEC")
    endif()
    set(sizes ${_sizes_${page}})
    list(LENGTH sizes n)
    set(outputs "")
    set(size_args "")
    if(n EQUAL 0)
      if(ui_layout STREQUAL "res")
        message(FATAL_ERROR "compose_add_pages(${target}): page ${page} needs SIZES with UI_LAYOUT res")
      endif()
      list(APPEND outputs "${project}/ui/${page}.json")
    else()
      if(ui_layout STREQUAL "flat" AND n GREATER 1)
        message(FATAL_ERROR "compose_add_pages(${target}): page ${page} has several sizes; they need UI_LAYOUT res")
      endif()
      foreach(size IN LISTS sizes)
        if(NOT size MATCHES "^[0-9]+x[0-9]+$")
          message(FATAL_ERROR "compose_add_pages(${target}): page ${page}: '${size}' is no size WxH")
        endif()
        if(ui_layout STREQUAL "flat")
          list(APPEND outputs "${project}/ui/${page}.json")
        else()
          list(APPEND outputs "${project}/ui/${size}/${page}.json")
        endif()
      endforeach()
      list(JOIN sizes "," joined)
      set(size_args --sizes "${joined}")
    endif()
    # The data header is generated and rewritten by every run, so it is an output as well
    # (except with --json-only, which writes only the layouts).
    if(NOT "--json-only" IN_LIST options)
      list(APPEND outputs "${project}/src/logic/${page}Data.h")
    endif()
    # compose leaves a file whose bytes did not change untouched; Ninja remembers that the
    # command ran, Make needs the outputs' times moved on.
    set(touch "")
    if(CMAKE_GENERATOR MATCHES "Make")
      set(touch COMMAND "${CMAKE_COMMAND}" -E touch_nocreate ${outputs})
    endif()
    add_custom_command(
      OUTPUT ${outputs}
      COMMAND "${compose}" "${_spec_${page}}" --project "${project}" --page "${page}" --ui-layout ${ui_layout}
              ${size_args} --depfile "${depdir}/${page}.d" ${options}
      ${touch}
      DEPENDS "${_spec_${page}}" "${compose}"
      DEPFILE "${depdir}/${page}.d"
      COMMENT "Composing page ${page}"
      VERBATIM)
    list(APPEND all_outputs ${outputs})
  endforeach()
  add_custom_target(${target} ${all} DEPENDS ${all_outputs})
endfunction()
