# cmake -DBUILD_DIR=<build> -DPREFIX=<empty place> -P CheckInstall.cmake
# Installs the build into PREFIX and fails unless every file a desktop needs is where it looks.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
                RESULT_VARIABLE status OUTPUT_QUIET)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${status}")
endif()
foreach(file bin/varo bin/varo-cli share/applications/varo.desktop
             share/icons/hicolor/scalable/apps/varo.svg share/man/man1/varo.1
             share/man/man1/varo-cli.1 share/doc/varo/copyright)
  if(NOT EXISTS ${PREFIX}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
file(STRINGS ${PREFIX}/share/applications/varo.desktop entry)
if(NOT "Exec=varo" IN_LIST entry OR NOT "Icon=varo" IN_LIST entry)
  message(FATAL_ERROR "the desktop entry does not start the installed varo with its icon")
endif()
# The software centre's description and the menu entry, checked by Debian's own validators
# where they are installed (the CI machine has both).
file(GLOB metainfo ${PREFIX}/share/metainfo/*.metainfo.xml)
if(NOT metainfo)
  message(FATAL_ERROR "not installed: share/metainfo/*.metainfo.xml")
endif()
find_program(APPSTREAMCLI appstreamcli)
find_program(DESKTOP_FILE_VALIDATE desktop-file-validate)
foreach(check "${APPSTREAMCLI};validate;--no-net;${metainfo}"
              "${DESKTOP_FILE_VALIDATE};${PREFIX}/share/applications/varo.desktop")
  list(GET check 0 tool)
  if(tool)
    execute_process(COMMAND ${check} RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
    if(NOT status EQUAL 0)
      message(FATAL_ERROR "${check}:\n${said}")
    endif()
  endif()
endforeach()
file(REMOVE_RECURSE ${PREFIX})
