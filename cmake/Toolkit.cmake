# The libraries from outside, found once.
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Qml Quick QuickControls2)
find_package(QCoro6 REQUIRED COMPONENTS Core)
qt_standard_project_setup()
# Every library used is where the system looks anyhow.
set(CMAKE_SKIP_RPATH ON)
set(CMAKE_AUTOMOC ON)
set(QT_QML_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-fuse-ld=lld)
endif()
