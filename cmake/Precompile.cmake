# Precompiled headers, off by default: measured on the 2-core machine (GCC 12,
# RelWithDebInfo) a precompiled set of the Qt and standard headers is a 200 MB
# file that costs about 17 s of CPU to make and 1.5 to 2.5 s of system time to
# load in every file that uses it, about what parsing those headers costs, so
# the build as a whole got no faster (README, "Build times"). Kept as a switch
# to measure again on another compiler or machine: -DHK_PRECOMPILE=ON gives each
# library and test program of ten or more sources the headers it can reach.
option(HK_PRECOMPILE "Precompile the Qt and standard headers of the larger targets" OFF)

set(hk_pch_core <QString> <QStringList> <QList> <QHash> <QVariant> <QByteArray> <QDir> <QFile>
    <QFileInfo> <QRegularExpression> <QCoreApplication> <algorithm> <array> <functional>
    <memory> <vector>)
set(hk_pch_widgets <QApplication> <QWidget> <QDialog> <QPushButton> <QLineEdit> <QLabel>
    <QGridLayout> <QHBoxLayout> <QVBoxLayout> <QComboBox> <QPainter> <QEvent> <QKeyEvent> <QTimer>)
set(hk_pch_sql <QSqlDatabase> <QSqlQuery> <QSqlError>)
set(hk_pch_tests <gtest/gtest.h> <QTest> <QTemporaryDir>)

# Every target defined in dir and the folders below it.
function(hk_targets_below dir out)
  get_property(targets DIRECTORY ${dir} PROPERTY BUILDSYSTEM_TARGETS)
  get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
  foreach(sub IN LISTS subdirs)
    hk_targets_below(${sub} below)
    list(APPEND targets ${below})
  endforeach()
  set(${out} ${targets} PARENT_SCOPE)
endfunction()

# The libraries a target links, directly or through our own libraries.
function(hk_linked target out)
  set(seen)
  set(todo ${target})
  while(todo)
    list(POP_FRONT todo t)
    if(t IN_LIST seen OR NOT TARGET ${t})
      continue()
    endif()
    list(APPEND seen ${t})
    get_target_property(imported ${t} IMPORTED)
    if(imported)
      continue()
    endif()
    get_target_property(type ${t} TYPE)
    if(type STREQUAL INTERFACE_LIBRARY)
      get_target_property(libs ${t} INTERFACE_LINK_LIBRARIES)
    else()
      get_target_property(libs ${t} LINK_LIBRARIES)
    endif()
    if(libs)
      list(APPEND todo ${libs})
    endif()
  endwhile()
  set(${out} ${seen} PARENT_SCOPE)
endfunction()

function(hk_precompile_all)
  if(NOT HK_PRECOMPILE)
    return()
  endif()
  hk_targets_below(${PROJECT_SOURCE_DIR} targets)
  foreach(t IN LISTS targets)
    get_target_property(type ${t} TYPE)
    get_target_property(sources ${t} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    list(LENGTH sources count)
    if(count LESS 10 OR NOT type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
      continue()
    endif()
    hk_linked(${t} linked)
    set(headers ${hk_pch_core})
    if(Qt6::Widgets IN_LIST linked)
      list(APPEND headers ${hk_pch_widgets})
    endif()
    if(Qt6::Sql IN_LIST linked)
      list(APPEND headers ${hk_pch_sql})
    endif()
    if(GTest::gtest IN_LIST linked)
      list(APPEND headers ${hk_pch_tests})
    endif()
    target_precompile_headers(${t} PRIVATE ${headers})
  endforeach()
endfunction()
