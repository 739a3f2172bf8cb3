# cmake -DCLI=<varo-cli> -DOUT=<varo-cli.1> -DVERSION=<x.y> -P VaroCliManPage.cmake
# Writes varo-cli's manual page from its own help texts, so the page and the program never
# disagree: the overview, then each command's usage as the command prints it.
cmake_minimum_required(VERSION 3.25)

# Text as roff shows it verbatim: backslashes doubled, a line's leading dot or quote escaped.
function(roff_verbatim text out)
  string(REPLACE "\\" "\\e" text "${text}")
  string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

function(help_of command out)
  if(command STREQUAL "")
    execute_process(COMMAND ${CLI} --help OUTPUT_VARIABLE text RESULT_VARIABLE status)
  else()
    execute_process(COMMAND ${CLI} ${command} --help OUTPUT_VARIABLE text RESULT_VARIABLE status)
  endif()
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${CLI} ${command} --help failed: ${status}")
  endif()
  roff_verbatim("${text}" text)
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

help_of("" overview)
set(page ".TH VARO-CLI 1 \"\" \"VARO ${VERSION}\" \"User Commands\"
.SH NAME
varo-cli \\- design and analyse the pi-L output network of a vacuum-tube amplifier
.SH SYNOPSIS
.B varo-cli
.I command
.RI [ options ]
.SH DESCRIPTION
.B varo-cli
runs the calculations of the desktop program
.BR varo (1)
without a screen, for scripts and batch checks. Every value is entry text exactly as typed into
the program's fields (\\(lq3.6M\\(rq, \\(lq2,5k\\(rq). A usage mistake exits 2 with the reason and
the command's usage; a file that cannot be written exits 1.
.PP
.nf
${overview}.fi
.SH COMMANDS
")
foreach(command design plate-load coil bands load-range)
  help_of(${command} usage)
  string(APPEND page ".SS ${command}\n.nf\n${usage}.fi\n")
endforeach()
string(APPEND page ".SH EXAMPLES
.nf
varo-cli design \\-\\-frequency 3.6M \\-\\-plate 2,5k \\-\\-json
varo-cli design \\-\\-frequency 7.15M \\-\\-losses \\-\\-l1-winding 2,4,14 \\-\\-save amp.varo
varo-cli design \\-\\-open amp.varo \\-\\-pdf report.pdf
varo-cli coil \\-\\-inductance 10u \\-\\-diameter 2 \\-\\-length 4 \\-\\-gauge 14 \\-\\-frequency 7.15M
varo-cli bands \\-\\-cout 5 \\-\\-stray 10 \\-\\-tune 10:500 \\-\\-load-cap 30:3000
varo-cli load-range \\-\\-power 1500 \\-\\-swr 3 \\-\\-json
.fi
.SH SEE ALSO
.BR varo (1)
")
file(WRITE ${OUT} "${page}")
