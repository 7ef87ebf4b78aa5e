find_package(GTest REQUIRED)
include(GoogleTest)

# trellisport_add_test(NAME SOURCES file... LINK target...)
# A GoogleTest program; its cases appear in ctest as NAME.Suite.Case.
# QT: the tests need an event loop; the program then has a QCoreApplication (tests/Support).
function(trellisport_add_test name)
    cmake_parse_arguments(arg "QT" "TIMEOUT" "SOURCES;LINK" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE trellisport_warnings GTest::gmock ${arg_LINK})
    if(arg_QT)
        target_link_libraries(${name} PRIVATE trellisport_test_support)
    else()
        target_link_libraries(${name} PRIVATE GTest::gmock_main)
    endif()
    gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# trellisport_add_qml_test(NAME SOURCES file... LINK target... [SCREEN file])
# Tests that draw, without a display: the program has a QGuiApplication (tests/QmlSupport).
# SCREEN: describes the screen for the toolkit; it is a desktop's otherwise.
function(trellisport_add_qml_test name)
    cmake_parse_arguments(arg "" "SCREEN" "SOURCES;LINK" ${ARGN})
    set(platform offscreen)
    if(arg_SCREEN)
        set(platform "offscreen:configfile=${CMAKE_CURRENT_SOURCE_DIR}/${arg_SCREEN}")
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE
        trellisport_warnings trellisport_qml_test_support trellisport_test_fakes ${arg_LINK})
    gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=${platform};LC_ALL=C.UTF-8")
endfunction()
