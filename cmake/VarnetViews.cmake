# varnet_views(CPP ... QML ...): the target VarnetViews, the QML module "Varnet" and its plugin. A QML file is
# known by its own name wherever it lies; files whose name is in SINGLETONS are singletons.
function(varnet_views)
    cmake_parse_arguments(ARG "" "" "CPP;QML;SINGLETONS;LINK" ${ARGN})
    foreach(file ${ARG_QML} ${ARG_SINGLETONS})
        get_filename_component(name ${file} NAME)
        set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${name})
    endforeach()
    set_source_files_properties(${ARG_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
    qt_add_library(VarnetViews STATIC)
    set_target_properties(VarnetViews PROPERTIES AUTOMOC ON)
    # Byte code alone: C++ for every binding costs minutes of compiling and megabytes of program for views that
    # are at rest most of the time.
    set_target_properties(VarnetViews PROPERTIES QT_QMLCACHEGEN_ARGUMENTS "--only-bytecode")
    qt_add_qml_module(
        VarnetViews
        URI Varnet
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/Varnet
        # The types behind our painted items: without them the QML compiler gives up on whoever uses one.
        DEPENDENCIES QtQuick
        SOURCES ${ARG_CPP}
        QML_FILES ${ARG_QML} ${ARG_SINGLETONS})
    target_link_libraries(VarnetViews PUBLIC varnet_flags ${ARG_LINK} Qt6::Quick)
    # The generated registration includes each header by its own name alone.
    foreach(file ${ARG_CPP})
        get_filename_component(folder ${file} DIRECTORY)
        target_include_directories(VarnetViews PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    endforeach()
    set_target_properties(VarnetViews VarnetViewsplugin PROPERTIES VARNET_GENERATED ON)
    set_source_files_properties(${ARG_CPP} PROPERTIES COMPILE_OPTIONS "${varnet_strict_options}")
endfunction()
