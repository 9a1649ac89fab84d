# velk tools --import and --export: FreeCAD tool bits and libraries and LinuxCNC tool tables
# moved into and out of a tool store. Each test runs in a folder of its own holding a copy of
# files/ and of a project (p.json); its runs name files relative to that folder.
set(exchange_dir ${CMAKE_CURRENT_LIST_DIR})
set(exchange_expected ${exchange_dir}/expected)
set(no_tool_store ${exchange_dir}/files/no-tool-store.json)

# exchange_test(NAME [PROJECT file] [UNCHANGED file] [SAME pairs]
#               RUN args [EXPECT file] [EXIT code] [ERROR line] RUN ...)
# Arguments of a run are separated by "|"; PROJECT defaults to a project without a tool store.
function(exchange_test name)
  set(project ${no_tool_store})
  set(definitions)
  set(step 0)
  set(keyword)
  foreach(argument IN LISTS ARGN)
    if(argument MATCHES "^(PROJECT|UNCHANGED|SAME|RUN|EXPECT|EXIT|ERROR)$")
      set(keyword ${argument})
      continue()
    endif()
    if(keyword STREQUAL "PROJECT")
      set(project ${argument})
    elseif(keyword STREQUAL "UNCHANGED")
      list(APPEND definitions "-DUNCHANGED=${argument}")
    elseif(keyword STREQUAL "SAME")
      list(APPEND definitions "-DSAME=${argument}")
    elseif(keyword STREQUAL "RUN")
      math(EXPR step "${step} + 1")
      list(APPEND definitions "-DSTEP${step}=${argument}")
    elseif(keyword STREQUAL "EXPECT")
      # On Windows velk prints the host's texts in its code page, as they stand.
      set(expected_file ${exchange_expected}/${argument})
      if(WIN32 AND EXISTS ${exchange_expected}/windows-1252/${argument})
        set(expected_file ${exchange_expected}/windows-1252/${argument})
      endif()
      list(APPEND definitions "-DSTEP${step}_EXPECTED=${expected_file}")
    elseif(keyword STREQUAL "EXIT")
      list(APPEND definitions "-DSTEP${step}_EXIT=${argument}")
    elseif(keyword STREQUAL "ERROR")
      list(APPEND definitions "-DSTEP${step}_ERROR=${argument}")
    endif()
  endforeach()
  add_test(NAME cli.exchange.${name}
    COMMAND ${CMAKE_COMMAND} "-DVELK=${velk_command}" -DWORK=${CMAKE_CURRENT_BINARY_DIR}/exchange/${name}
      -DFIXTURES=${exchange_dir}/files -DPROJECT=${project} -DSTEPS=${step} ${definitions}
      -P ${exchange_dir}/ExchangeSteps.cmake)
endfunction()

set(demo ${PROJECT_SOURCE_DIR}/examples/demo-project.json)
set(import_into_2 "tools|p.json|--store|2|--import")
set(list_2 "tools|p.json|--store|2")
set(export_2 "tools|p.json|--store|2|--export")

exchange_test(a_freecad_library_of_seven_bits_adds_seven_tools
  RUN "${import_into_2}|Library/shop.fctl" EXPECT import-shop.expected
  RUN "${list_2}" EXPECT list-shop.expected
  RUN "${export_2}|shop.tbl" EXPECT export-shop-tbl.expected
  SAME "shop.tbl=${exchange_expected}/shop.tbl")

# Bits read and written back in mm give the same files; an inch bit comes back in mm, the drill
# without the parameter the record keeps in its comment, the tap with its cutting edge as height.
exchange_test(import_then_export_gives_the_same_bits
  RUN "${import_into_2}|Library/shop.fctl"
  RUN "${export_2}|shop-again.fctl" EXPECT export-shop-fctl.expected
  SAME "shop-again.fctl=${exchange_expected}/shop-again.fctl|6_mm_end_mill_3_flutes.fctb=Bit/6mm_Endmill.fctb|10_mm_bull_nose_R1.fctb=Bit/10mm_Bullnose.fctb|Thread_mill_M6.fctb=Library/Threadmill_M6.fctb|3_8_in_ball_nose_2_flutes.fctb=${exchange_expected}/ball-nose-in-mm.fctb|1_2_in_chamfer_mill_90.fctb=${exchange_expected}/chamfer-in-mm.fctb|8.5_mm_drill.fctb=${exchange_expected}/drill.fctb|M8_x_1.25_tap.fctb=${exchange_expected}/tap.fctb")

exchange_test(a_linuxcnc_table_in_inches_adds_tools_in_mm
  RUN "${import_into_2}|inch.tbl|--units|inch" EXPECT import-inch.expected
  RUN "${list_2}" EXPECT list-inch.expected
  RUN "${export_2}|inch-again.tbl|--units|inch"
  RUN "${export_2}|mm.tbl"
  SAME "inch-again.tbl=inch.tbl|mm.tbl=${exchange_expected}/inch-in-mm.tbl")

exchange_test(a_metric_table_with_comments_and_lathe_words
  RUN "${import_into_2}|metric.tbl" EXPECT import-metric.expected
  RUN "${list_2}" EXPECT list-metric.expected
  RUN "${export_2}|metric-again.tbl" EXPECT export-metric.expected
  SAME "metric-again.tbl=${exchange_expected}/metric-again.tbl")

# The record keeps the host's Windows-1252 bytes (the listing prints them as they are); files
# are written in UTF-8.
exchange_test(windows_1252_and_utf8_files_both_read
  RUN "${import_into_2}|windows-1252.tbl|spot-drill-windows-1252.fctb|Bit/8.5mm_Drill.fctb"
    EXPECT import-1252.expected
  RUN "${list_2}" EXPECT list-1252.expected
  RUN "${export_2}|both.tbl"
  RUN "${export_2}|both.fctl"
  SAME "both.tbl=${exchange_expected}/windows-1252-as-utf8.tbl|Spot_drill_6_mm.fctb=${exchange_expected}/spot-drill-utf8.fctb")

exchange_test(a_tool_number_in_the_store_is_refused PROJECT ${demo} UNCHANGED p.json
  RUN "${import_into_2}|metric.tbl" EXIT 1
    ERROR "velk: metric.tbl: line 1: store 2 has T1 already (tool 1): give --replace to write over it")

exchange_test(replace_writes_over_the_tools_of_their_numbers PROJECT ${demo}
  RUN "${import_into_2}|metric.tbl|--replace" EXPECT import-replace.expected
  RUN "${list_2}" EXPECT list-replace.expected)

exchange_test(tools_without_a_number_take_the_lowest_free_ones PROJECT ${demo}
  RUN "${import_into_2}|Bit/6mm_Endmill.fctb|spot-drill-windows-1252.fctb" EXPECT import-unnumbered.expected
  RUN "${list_2}" EXPECT list-unnumbered.expected)

# The demo's tools out as a table and as a library, each read into a store of their own and
# written out again.
exchange_test(export_then_import_gives_the_same_diameters PROJECT ${demo}
  RUN "${export_2}|demo.tbl" EXPECT export-demo-tbl.expected
  RUN "${export_2}|demo.fctl" EXPECT export-demo-fctl.expected
  RUN "tools|no-tool-store.json|--store|2|--import|demo.tbl"
  RUN "tools|no-tool-store.json|--store|2" EXPECT list-demo-from-tbl.expected
  RUN "tools|no-tool-store.json|--store|2|--export|demo-again.tbl"
  RUN "tools|no-tool-store.json|--store|3|--import|demo.fctl"
  RUN "tools|no-tool-store.json|--store|3" EXPECT list-demo-from-fctl.expected
  RUN "tools|no-tool-store.json|--store|3|--export|Library/demo-again.fctl"
  SAME "demo-again.tbl=demo.tbl|Library/demo-again.fctl=${exchange_expected}/demo-again.fctl|Library/End_mill_10_mm_4_flutes.fctb=End_mill_10_mm_4_flutes.fctb|Library/Thread_mill_M8_x_1.25.fctb=Thread_mill_M8_x_1.25.fctb")

# Bad input: one line naming the file and where, status 2, the project as it was; every file is
# read before anything is written.
function(bad_import name file error)
  exchange_test(${name} UNCHANGED p.json
    RUN "${import_into_2}|inch.tbl|${file}" EXIT 2 ERROR "velk: ${file}: ${error}")
endfunction()
bad_import(a_bit_that_is_not_json_is_refused bad/not-json.fctb
  "not JSON: line 5, column 13: syntax error while parsing object - unexpected string literal{semicolon} expected '}'")
bad_import(a_quantity_without_a_number_is_refused bad/no-number.fctb
  "/parameter/Diameter: expected a number and its unit, e.g. \"5.0000 mm\", got 'mm'")
bad_import(an_unknown_unit_is_refused bad/unknown-unit.fctb
  "/parameter/Length: unknown unit 'ft': expected mm, in or \"")
bad_import(a_count_with_a_unit_is_refused bad/count-with-unit.fctb
  "/parameter/Flutes: expected a whole number, got '4 mm'")
bad_import(a_bit_of_another_version_is_refused bad/old-version.fctb
  "/version: expected 2, the version of a FreeCAD tool bit")
bad_import(a_library_naming_a_missing_bit_is_refused bad/missing-bit.fctl
  "/tools/1/path: bit file 'missing.fctb' not found in bad or Bit")
bad_import(a_table_word_not_a_letter_and_a_number_is_refused bad/bad-word.tbl
  "line 2: 'XYZ': expected a word of a letter and a number, e.g. D0.25")
bad_import(a_table_word_of_another_letter_is_refused bad/unknown-word.tbl
  "line 1: 'K3': expected one of the words T P D Z X Y A B C U V W I J Q")
bad_import(a_fractional_tool_number_is_refused bad/fractional-tool.tbl
  "line 1: 'T1.5': expected a whole number")
bad_import(a_file_of_another_kind_is_refused tools.csv
  "expected a FreeCAD tool bit (.fctb) or library (.fctl) or a LinuxCNC tool table (.tbl)")

exchange_test(a_tool_number_given_twice_is_refused UNCHANGED p.json
  RUN "${import_into_2}|Library/shop.fctl|metric.tbl" EXIT 1
    ERROR "velk: metric.tbl: line 1: T1 is given twice, also by Library/shop.fctl: /tools/0")
exchange_test(an_export_of_another_kind_is_refused PROJECT ${demo}
  RUN "${export_2}|tools.csv" EXIT 1
    ERROR "velk: tools.csv: expected a LinuxCNC tool table (.tbl) or a FreeCAD tool library (.fctl) to write")
bad_import(a_word_given_twice_on_a_line_is_refused bad/twice.tbl
  "line 1: 'D8': a second D word on the line")
bad_import(a_word_without_a_finite_number_is_refused bad/not-a-number.tbl
  "line 1: 'Dnan': expected a word of a letter and a number, e.g. D0.25")
bad_import(a_text_the_host_has_no_bytes_for_is_refused bad/not-windows-1252.fctb
  "/name: expected a text of Windows-1252 characters")

# A shape the table does not know is the tool type as it stands, and written back as the shape.
exchange_test(an_unknown_shape_comes_back_as_it_was
  RUN "${import_into_2}|Drag_knife.fctb"
  RUN "${list_2}" EXPECT list-drag-knife.expected
  RUN "${export_2}|knives.fctl"
  SAME "Drag_knife.fctb=Drag_knife.fctb")

# A library written in inches: the inch bits come back with their own values.
exchange_test(a_library_written_in_inches
  RUN "${import_into_2}|Library/shop.fctl"
  RUN "${export_2}|shop-inch.fctl|--units|inch"
  SAME "3_8_in_ball_nose_2_flutes.fctb=${exchange_expected}/ball-nose-in-inches.fctb")
