# trellisport_qml_module(NAME URI uri [DEPENDS uri...] SOURCES file... QML_FILES file...
#                        [SINGLETONS file...] LINK target...)
# One folder of the application: a static library trellisport_NAME whose C++ types and QML files are
# the module `uri`, found below qrc:/qt/qml. DEPENDS: the modules of ours whose types its types are
# made from. Link trellisport_NAMEplugin where the program is made.
function(trellisport_qml_module name)
    cmake_parse_arguments(arg "" "URI" "DEPENDS;SOURCES;QML_FILES;SINGLETONS;LINK" ${ARGN})
    set(target trellisport_${name})
    set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    qt_add_library(${target} STATIC)
    qt_add_qml_module(${target}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        DEPENDENCIES QtQuick ${arg_DEPENDS}
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML_FILES} ${arg_SINGLETONS})
    # The generated registration code includes the headers by their bare names.
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${arg_LINK} PRIVATE trellisport_warnings)

    # What the toolkit's compilers write is not ours to warn about, and compiles faster in lots.
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(source MATCHES "/\\.rcc/" OR source MATCHES "qmltyperegistrations\\.cpp$")
            set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "-w")
        elseif(source MATCHES "\\.cpp$")
            set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
    endforeach()
endfunction()
