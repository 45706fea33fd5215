# What the program stands on: Qt 5 (Core, Gui, Widgets; LinguistTools for the translation, Test for
# the tests), libtiff and FFTW 3.
find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets LinguistTools Test)
find_package(TIFF REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(FFTW3 REQUIRED IMPORTED_TARGET fftw3)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
