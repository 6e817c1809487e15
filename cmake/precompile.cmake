# Headers of the library, of Qt and of GoogleTest are parsed once for each kind of target, not once for
# each source. None of the house's own headers stands here: whoever touches one would build everything.
# Sources and headers still include what they use; the presets fuzz, windows and tidy build without.
set(LAPVANE_HEADERS_STD <algorithm> <array> <cmath> <cstdint> <cstdlib> <cstring> <filesystem> <fstream>
    <functional> <limits> <map> <memory> <optional> <set> <span> <sstream> <stdexcept> <string>
    <string_view> <system_error> <utility> <vector>)
set(LAPVANE_HEADERS_QT <QApplication> <QCheckBox> <QComboBox> <QDialog> <QElapsedTimer> <QEvent> <QFile>
    <QGridLayout> <QGroupBox> <QHBoxLayout> <QKeyEvent> <QLabel> <QLineEdit> <QMessageBox> <QPainter>
    <QPushButton> <QRadioButton> <QScreen> <QString> <QTabWidget> <QTimer> <QToolButton> <QVBoxLayout>
    <QWidget>)
set(LAPVANE_HEADERS_TEST <deque> <iterator> <gtest/gtest.h>)

# What the library's headers silence for themselves GCC forgets in a precompiled one (char_traits.h);
# the preset windows keeps these warnings for the logic. ccache wants to see where the header went in.
set(LAPVANE_PRECOMPILED_OPTIONS)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
    set(LAPVANE_PRECOMPILED_OPTIONS -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread
        -fpch-preprocess)
endif()

# A precompiled header belongs to the flags that made it: logic, windows, and the tests of each.
function(lapvane_precompile target)
    target_precompile_headers(${target} PRIVATE ${LAPVANE_HEADERS_STD} ${ARGN})
    target_compile_options(${target} PRIVATE ${LAPVANE_PRECOMPILED_OPTIONS})
endfunction()
function(lapvane_precompiled_as model)
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM ${model})
        target_compile_options(${target} PRIVATE ${LAPVANE_PRECOMPILED_OPTIONS})
    endforeach()
endfunction()
