# varo_library(<name> ALIAS <Alias> [QT] DEPS ...)
# One static library per folder: every .cpp/.h beside the CMakeLists.txt (not below it).
function(varo_library name)
  cmake_parse_arguments(ARG "QT" "ALIAS;DIR" "DEPS" ${ARGN})
  if(NOT ARG_DIR)
    set(ARG_DIR ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${ARG_DIR}/*.cpp ${ARG_DIR}/*.h)
  set(scope PUBLIC)
  if(sources MATCHES "\\.cpp")
    add_library(${name} STATIC ${sources})
  else()
    # A folder that holds no code yet still gives its dependants a target to name.
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  add_library(${ARG_ALIAS} ALIAS ${name})
  target_include_directories(${name} ${scope} ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} ${scope} ${ARG_DEPS})
  if(ARG_QT)
    target_link_libraries(${name} ${scope} Qt6::Widgets)
  endif()
endfunction()

# varo_test(<name> DIR <folder under tests> [QT] DEPS ...): one GoogleTest executable per folder.
function(varo_test name)
  cmake_parse_arguments(ARG "QT" "DIR" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_DIR}/*.cpp
       ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_DIR}/*.h)
  if(NOT sources)
    return()
  endif()
  if(ARG_QT)
    # Widget tests need a QApplication before the first test runs; its main is built once.
    if(NOT TARGET varo_qt_test_main)
      add_library(varo_qt_test_main STATIC ${CMAKE_CURRENT_SOURCE_DIR}/support/qt_test_main.cpp)
      target_link_libraries(varo_qt_test_main PUBLIC GTest::gtest Qt6::Widgets)
      set_target_properties(varo_qt_test_main PROPERTIES AUTOMOC OFF)
    endif()
    set(test_main varo_qt_test_main)
  else()
    set(test_main GTest::gtest_main)
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} ${test_main} GTest::gmock)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    # One value per property: the discovery script flattens lists, so two variables go through
    # two properties.
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" ENVIRONMENT_MODIFICATION "LC_ALL=set:C.UTF-8")
endfunction()
