# The inspector beside the lists.
list(
    APPEND
    views_cpp
    DetailInspector/DetailModel.cpp
    DetailInspector/DetailRows.cpp
    DetailInspector/DetailTexts.cpp)
list(
    APPEND
    views_qml
    DetailInspector/DetailBody.qml
    DetailInspector/DetailFigure.qml
    DetailInspector/DetailHead.qml
    DetailInspector/DetailInspector.qml
    DetailInspector/DetailProcess.qml
    DetailInspector/DetailSections.qml
    DetailInspector/DetailServer.qml
    DetailInspector/Disclosure.qml)
