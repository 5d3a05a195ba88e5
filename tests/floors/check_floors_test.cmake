# The include check on a throwaway tree under the real floors table: it must
# refuse an include that runs upward and a Widgets header below the screens,
# naming both, and let an include along the floors pass.
#   cmake -DSOURCE=<repo> -DWORK=<scratch folder> -P check_floors_test.cmake
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/src/floors.txt DESTINATION ${WORK}/tree/src)
file(WRITE ${WORK}/widgets/QMessageBox "")
file(WRITE ${WORK}/tree/src/hotkeys/Fine.cpp
     "#include \"hotkeys/Fine.h\"\n#include \"database/DbEngine.h\"\n#include <QImage>\n")

function(check expect_failure out)
  execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${WORK}/tree -DWIDGETS_DIR=${WORK}/widgets
                          -P ${SOURCE}/cmake/CheckFloors.cmake
                  RESULT_VARIABLE code OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(expect_failure AND code EQUAL 0)
    message(FATAL_ERROR "the check passed a tree that breaks the floors:\n${output}")
  elseif(NOT expect_failure AND NOT code EQUAL 0)
    message(FATAL_ERROR "the check refused a tree along the floors:\n${output}")
  endif()
  set(${out} "${output}" PARENT_SCOPE)
endfunction()

check(FALSE output)

file(WRITE ${WORK}/tree/src/database/Upward.cpp
     "#include \"database/DbEngine.h\"\n\n#include \"shell/frmMain.h\"\n")
file(WRITE ${WORK}/tree/src/settings/Boxes.cpp "#include \"settings/clsDataPath.h\"\n#include <QMessageBox>\n")
check(TRUE output)
foreach(expected
        "src/database/Upward.cpp:3: includes \"shell/frmMain.h\": database may include common, platform"
        "src/settings/Boxes.cpp:2: includes <QMessageBox>, a Qt Widgets header: settings is below the screens")
  string(FIND "${output}" "${expected}" at)
  if(at LESS 0)
    message(FATAL_ERROR "the check did not say\n  ${expected}\nbut:\n${output}")
  endif()
endforeach()
if(output MATCHES "Fine.cpp")
  message(FATAL_ERROR "the check named an include along the floors:\n${output}")
endif()
message(STATUS "the check refuses both and names them")
